#pragma once

#include <QByteArray>

#include <cstddef>
#include <optional>
#include <span>

// An open /proc/<pid> directory. Every file is opened relative to it, so all
// reads of one process go to that one process: once it exits, they fail
// rather than quietly read a later process that got the same number. Owns the
// descriptor; moving hands it over.
class ProcPidDirectory {
public:
    // Nothing when the directory cannot be opened (the process is gone).
    static std::optional<ProcPidDirectory> open(const QByteArray &path);

    ProcPidDirectory(ProcPidDirectory &&other) noexcept;
    ProcPidDirectory &operator=(ProcPidDirectory &&other) noexcept;
    ProcPidDirectory(const ProcPidDirectory &) = delete;
    ProcPidDirectory &operator=(const ProcPidDirectory &) = delete;
    ~ProcPidDirectory();

    // Reads a small file whole into `buffer`: the number of bytes, or nothing
    // when it cannot be read or does not fit. procfs hands one-record files
    // over in one read, so a read shorter than asked for ends the file and
    // saves the system call that would return end of file.
    std::optional<std::size_t> readSmallFile(const char *name, std::span<char> buffer) const;

    // Reads a file of any size whole.
    std::optional<QByteArray> readFile(const char *name) const;

    // The target of a symbolic link in the directory; nothing when it cannot
    // be read or is longer than a path may be.
    std::optional<QByteArray> readLink(const char *name) const;

private:
    explicit ProcPidDirectory(int fd) : m_fd(fd) {}
    int m_fd = -1;
};
