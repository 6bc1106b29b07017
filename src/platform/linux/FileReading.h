#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>

// Reading small kernel files (procfs, sysfs). These files report a size of 0,
// so they are read until end of file rather than by their stat size.
struct FileReadResult {
    std::optional<QByteArray> bytes; // absent on failure
    int error = 0;                   // errno of the failure, 0 on success

    bool permissionDenied() const;
};

FileReadResult readKernelFile(const QByteArray &path);
FileReadResult readKernelFile(const QString &path);

// The target of a symbolic link (readlink), absent when it cannot be read.
std::optional<QByteArray> readLinkTarget(const QByteArray &path);

// Parses a decimal integer, allowing leading blanks, an optional '-' and a
// trailing newline; nothing for empty text, junk or overflow.
std::optional<long long> parseDecimal(std::string_view text);
std::optional<unsigned long long> parseUnsignedDecimal(std::string_view text);

inline std::string_view asView(const QByteArray &bytes)
{
    return std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}
