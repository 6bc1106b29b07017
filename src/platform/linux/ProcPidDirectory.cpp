#include "platform/linux/ProcPidDirectory.h"

#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const char *fileName(ProcPidFile file)
{
    switch (file) {
    case ProcPidFile::stat:
        return "stat";
    case ProcPidFile::statm:
        return "statm";
    case ProcPidFile::io:
        return "io";
    case ProcPidFile::cgroup:
        return "cgroup";
    case ProcPidFile::cmdline:
        return "cmdline";
    }
    return "";
}

bool isShortOfDescriptors(int error)
{
    return error == EMFILE || error == ENFILE;
}

// One pread, retried on interruption; -1 on failure.
ssize_t readAt(int fd, char *into, std::size_t size, off_t offset)
{
    for (;;) {
        const ssize_t count = ::pread(fd, into, size, offset);
        if (count >= 0 || errno != EINTR)
            return count;
    }
}

} // namespace

std::optional<ProcPidDirectory> ProcPidDirectory::open(const QByteArray &path,
                                                       bool *shortOfDescriptors)
{
    UniqueFileDescriptor fd(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!fd.isValid()) {
        if (shortOfDescriptors && isShortOfDescriptors(errno))
            *shortOfDescriptors = true;
        return std::nullopt;
    }
    return ProcPidDirectory(std::move(fd));
}

std::optional<uid_t> ProcPidDirectory::owner() const
{
    struct stat info {};
    if (::fstat(m_directory.get(), &info) != 0)
        return std::nullopt;
    return info.st_uid;
}

int ProcPidDirectory::descriptorFor(ProcPidFile file, bool keep, UniqueFileDescriptor &transient)
{
    UniqueFileDescriptor &kept = m_files[std::size_t(file)];
    if (kept.isValid())
        return kept.get();
    UniqueFileDescriptor opened(
        ::openat(m_directory.get(), fileName(file), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!opened.isValid()) {
        m_shortOfDescriptors = m_shortOfDescriptors || isShortOfDescriptors(errno);
        return -1;
    }
    UniqueFileDescriptor &owner = keep ? kept : transient;
    owner = std::move(opened);
    return owner.get();
}

std::optional<std::size_t> ProcPidDirectory::readSmallFile(ProcPidFile file, std::span<char> buffer,
                                                           bool keep)
{
    UniqueFileDescriptor transient;
    const int fd = descriptorFor(file, keep, transient);
    if (fd < 0)
        return std::nullopt;
    std::size_t length = 0;
    while (length < buffer.size()) {
        const std::size_t wanted = buffer.size() - length;
        const ssize_t count = readAt(fd, buffer.data() + length, wanted, off_t(length));
        if (count < 0)
            return std::nullopt;
        length += static_cast<std::size_t>(count);
        if (static_cast<std::size_t>(count) < wanted)
            return length;
    }
    return std::nullopt; // filled the buffer: too long to be what we expect
}

std::optional<QByteArray> ProcPidDirectory::readFile(ProcPidFile file, bool keep)
{
    UniqueFileDescriptor transient;
    const int fd = descriptorFor(file, keep, transient);
    if (fd < 0)
        return std::nullopt;
    constexpr qsizetype chunk = 4096;
    QByteArray bytes;
    qsizetype length = 0;
    for (;;) {
        bytes.resize(length + chunk);
        const ssize_t count = readAt(fd, bytes.data() + length, chunk, off_t(length));
        if (count < 0)
            return std::nullopt;
        length += count;
        if (count < chunk)
            break;
    }
    bytes.truncate(length);
    return bytes;
}

std::optional<QByteArray> ProcPidDirectory::readLink(const char *name) const
{
    char buffer[PATH_MAX];
    const ssize_t length = ::readlinkat(m_directory.get(), name, buffer, sizeof buffer);
    if (length <= 0 || static_cast<std::size_t>(length) >= sizeof buffer)
        return std::nullopt;
    return QByteArray(buffer, length);
}

bool ProcPidDirectory::takeShortOfDescriptors()
{
    const bool shortOfDescriptors = m_shortOfDescriptors;
    m_shortOfDescriptors = false;
    return shortOfDescriptors;
}
