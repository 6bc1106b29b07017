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

// Parses a decimal integer, allowing leading blanks, an optional '-' and a
// trailing newline; nothing for empty text, junk or overflow.
std::optional<long long> parseDecimal(std::string_view text);
std::optional<unsigned long long> parseUnsignedDecimal(std::string_view text);

// The lines of a text, one per call to `next`, without their newlines; a last
// line without one counts too. Nothing once the text is used up.
class TextLines {
public:
    explicit TextLines(std::string_view text) : m_text(text) {}

    std::optional<std::string_view> next()
    {
        if (m_position >= m_text.size())
            return std::nullopt;
        std::size_t end = m_text.find('\n', m_position);
        if (end == std::string_view::npos)
            end = m_text.size();
        const std::string_view line = m_text.substr(m_position, end - m_position);
        m_position = end + 1;
        return line;
    }

private:
    std::string_view m_text;
    std::size_t m_position = 0;
};

inline std::string_view asView(const QByteArray &bytes)
{
    return std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}
