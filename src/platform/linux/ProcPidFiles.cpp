#include "platform/linux/ProcPidFiles.h"

#include "platform/linux/FileReading.h"

#include <algorithm>
#include <charconv>

namespace {

// The next blank-separated field of `text`, taken off its front; empty at the end.
std::string_view takeField(std::string_view &text)
{
    const std::size_t start = std::min(text.find_first_not_of(" \n"), text.size());
    const std::size_t end = std::min(text.find_first_of(" \n", start), text.size());
    const std::string_view field = text.substr(start, end - start);
    text.remove_prefix(end);
    return field;
}

std::optional<std::uint64_t> fieldValue(std::string_view field)
{
    std::uint64_t value = 0;
    const auto result = std::from_chars(field.data(), field.data() + field.size(), value);
    if (field.empty() || result.ec != std::errc() || result.ptr != field.data() + field.size())
        return std::nullopt;
    return value;
}

} // namespace

std::optional<std::uint64_t> parseProcPidStatmResidentBytes(std::string_view text,
                                                            std::uint64_t pageSize)
{
    const std::optional<std::uint64_t> size = fieldValue(takeField(text));
    const std::optional<std::uint64_t> residentPages = fieldValue(takeField(text));
    std::uint64_t bytes = 0;
    if (!size || !residentPages || __builtin_mul_overflow(*residentPages, pageSize, &bytes))
        return std::nullopt;
    return bytes;
}

std::optional<std::uint64_t> parseProcPidIoDiskBytes(std::string_view text)
{
    std::optional<unsigned long long> readBytes;
    std::optional<unsigned long long> writeBytes;
    while (!text.empty()) {
        const std::size_t newline = text.find('\n');
        const std::string_view line = text.substr(0, newline);
        text.remove_prefix(newline == std::string_view::npos ? text.size() : newline + 1);
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view key = line.substr(0, colon);
        // Exact keys: "cancelled_write_bytes" must not pass for "write_bytes".
        if (key == "read_bytes")
            readBytes = parseUnsignedDecimal(line.substr(colon + 1));
        else if (key == "write_bytes")
            writeBytes = parseUnsignedDecimal(line.substr(colon + 1));
    }
    if (!readBytes || !writeBytes)
        return std::nullopt;
    return static_cast<std::uint64_t>(*readBytes) + static_cast<std::uint64_t>(*writeBytes);
}

QStringList parseProcPidCmdline(QByteArrayView bytes)
{
    QStringList arguments;
    qsizetype position = 0;
    const qsizetype size = bytes.size();
    while (position < size) {
        if (bytes[position] == '\0') {
            ++position;
            continue;
        }
        qsizetype end = position;
        while (end < size && bytes[end] != '\0')
            ++end;
        const QByteArrayView argument = bytes.sliced(position, end - position);
        // Qt's check is strict: no overlong forms, no surrogates, nothing
        // above U+10FFFF.
        if (argument.isValidUtf8())
            arguments.append(QString::fromUtf8(argument));
        position = end;
    }
    return arguments;
}
