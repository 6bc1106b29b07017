#pragma once

#include "platform/linux/UniqueFileDescriptor.h"

#include <QByteArray>

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <sys/types.h>

// The files of /proc/<pid> that are read on every tick, and so may stay open.
enum class ProcPidFile { stat, statm, io, cgroup, cmdline };
inline constexpr std::size_t kProcPidFileCount = 5;

// An open /proc/<pid> directory. Every file is opened relative to it, so all
// reads of one process go to that one process: once it exits, they fail
// rather than quietly read a later process that got the same number.
//
// Files opened with `keep` stay open and are read again with pread at offset
// 0: the kernel generates procfs text at each read, so a kept descriptor
// gives this tick's text, for as long as the process lives, at one system
// call instead of three. Owns every descriptor; moving hands them over.
class ProcPidDirectory {
public:
    // Nothing when the directory cannot be opened (the process is gone, or
    // the program has no descriptor left: see `ranShortOfDescriptors`).
    static std::optional<ProcPidDirectory> open(const QByteArray &path,
                                                bool *shortOfDescriptors = nullptr);

    // The owner of the directory: the process's user, as the kernel sees it
    // now (procfs works it out at each call, so a change of owner shows).
    std::optional<uid_t> owner() const;

    // Reads a small file whole into `buffer`: the number of bytes, or nothing
    // when it cannot be read or does not fit. procfs hands one-record files
    // over in one read, so a read shorter than asked for ends the file and
    // saves the system call that would return end of file.
    std::optional<std::size_t> readSmallFile(ProcPidFile file, std::span<char> buffer, bool keep);

    // Reads a file of any size whole.
    std::optional<QByteArray> readFile(ProcPidFile file, bool keep);

    // The target of a symbolic link in the directory; nothing when it cannot
    // be read or is longer than a path may be.
    std::optional<QByteArray> readLink(const char *name) const;

    // Whether an open failed for want of descriptors (EMFILE, ENFILE) since
    // the last call; the caller frees some and reads again.
    bool takeShortOfDescriptors();

    // The most descriptors one process holds: the directory and every file.
    static constexpr int maximumDescriptors = 1 + int(kProcPidFileCount);

private:
    explicit ProcPidDirectory(UniqueFileDescriptor directory) : m_directory(std::move(directory)) {}
    // The descriptor to read `file` through: the kept one, or one opened now
    // into `transient`. -1 when it cannot be opened.
    int descriptorFor(ProcPidFile file, bool keep, UniqueFileDescriptor &transient);

    UniqueFileDescriptor m_directory;
    std::array<UniqueFileDescriptor, kProcPidFileCount> m_files;
    bool m_shortOfDescriptors = false;
};
