#include "platform/linux/FileReading.h"

#include <cerrno>
#include <charconv>

#include <fcntl.h>
#include <unistd.h>

bool FileReadResult::permissionDenied() const
{
    return error == EACCES || error == EPERM;
}

FileReadResult readKernelFile(const QByteArray &path)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return {std::nullopt, errno};
    QByteArray bytes;
    char buffer[4096];
    for (;;) {
        const ssize_t count = ::read(fd, buffer, sizeof buffer);
        if (count < 0) {
            if (errno == EINTR)
                continue;
            const int error = errno;
            ::close(fd);
            return {std::nullopt, error};
        }
        if (count == 0)
            break;
        bytes.append(buffer, count);
    }
    ::close(fd);
    return {std::move(bytes), 0};
}

FileReadResult readKernelFile(const QString &path)
{
    return readKernelFile(path.toLocal8Bit());
}

namespace {
std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ' || text.back() == '\t' ||
                             text.back() == '\r'))
        text.remove_suffix(1);
    return text;
}
} // namespace

std::optional<long long> parseDecimal(std::string_view text)
{
    text = trimmed(text);
    if (text.empty())
        return std::nullopt;
    long long value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<unsigned long long> parseUnsignedDecimal(std::string_view text)
{
    text = trimmed(text);
    if (text.empty() || text.front() == '-')
        return std::nullopt;
    unsigned long long value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return value;
}
