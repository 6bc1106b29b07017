#include "platform/linux/ProcPidDirectory.h"

#include <cerrno>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A descriptor of one file opened under the directory, closed on every path.
class OpenFile {
public:
    OpenFile(int directory, const char *name)
        : m_fd(::openat(directory, name, O_RDONLY | O_CLOEXEC | O_NOCTTY))
    {
    }
    ~OpenFile()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    bool isOpen() const { return m_fd >= 0; }

    // One read, retried on interruption; -1 on failure.
    ssize_t read(char *into, std::size_t size) const
    {
        for (;;) {
            const ssize_t count = ::read(m_fd, into, size);
            if (count >= 0 || errno != EINTR)
                return count;
        }
    }

private:
    int m_fd;
};

} // namespace

std::optional<ProcPidDirectory> ProcPidDirectory::open(const QByteArray &path)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return std::nullopt;
    return ProcPidDirectory(fd);
}

ProcPidDirectory::ProcPidDirectory(ProcPidDirectory &&other) noexcept
    : m_fd(std::exchange(other.m_fd, -1))
{
}

ProcPidDirectory &ProcPidDirectory::operator=(ProcPidDirectory &&other) noexcept
{
    if (this != &other) {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = std::exchange(other.m_fd, -1);
    }
    return *this;
}

ProcPidDirectory::~ProcPidDirectory()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

std::optional<std::size_t> ProcPidDirectory::readSmallFile(const char *name,
                                                           std::span<char> buffer) const
{
    const OpenFile file(m_fd, name);
    if (!file.isOpen())
        return std::nullopt;
    std::size_t length = 0;
    while (length < buffer.size()) {
        const std::size_t wanted = buffer.size() - length;
        const ssize_t count = file.read(buffer.data() + length, wanted);
        if (count < 0)
            return std::nullopt;
        length += static_cast<std::size_t>(count);
        if (static_cast<std::size_t>(count) < wanted)
            return length;
    }
    return std::nullopt; // filled the buffer: too long to be what we expect
}

std::optional<QByteArray> ProcPidDirectory::readFile(const char *name) const
{
    const OpenFile file(m_fd, name);
    if (!file.isOpen())
        return std::nullopt;
    constexpr qsizetype chunk = 4096;
    QByteArray bytes;
    qsizetype length = 0;
    for (;;) {
        bytes.resize(length + chunk);
        const ssize_t count = file.read(bytes.data() + length, chunk);
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
    const ssize_t length = ::readlinkat(m_fd, name, buffer, sizeof buffer);
    if (length <= 0 || static_cast<std::size_t>(length) >= sizeof buffer)
        return std::nullopt;
    return QByteArray(buffer, length);
}
