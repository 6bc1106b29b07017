#include "presentation/report/TextTable.h"

#include <algorithm>

namespace {

bool isWide(char32_t c)
{
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0x303E) ||
           (c >= 0x3041 && c <= 0x33FF) || (c >= 0x3400 && c <= 0x4DBF) ||
           (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xA000 && c <= 0xA4CF) ||
           (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
}

QString padded(const QString &text, int width)
{
    return text + QString(std::max(0, width - terminalWidth(text)), QLatin1Char(' '));
}

} // namespace

int terminalWidth(const QString &text)
{
    int width = 0;
    for (char32_t c : text.toUcs4())
        width += isWide(c) ? 2 : 1;
    return width;
}

QString TextTable::render() const
{
    std::vector<int> widths(static_cast<std::size_t>(m_headers.size()), 0);
    auto measure = [&](const QStringList &cells) {
        for (qsizetype i = 0; i < cells.size() && i < m_headers.size(); ++i)
            widths[i] = std::max(widths[i], terminalWidth(cells[i]));
    };
    measure(m_headers);
    for (const auto &row : m_rows)
        measure(row);

    QString out;
    auto appendLine = [&](const QStringList &cells) {
        QString text;
        for (qsizetype i = 0; i < m_headers.size(); ++i) {
            const QString cell = i < cells.size() ? cells[i] : QString();
            text +=
                i + 1 == m_headers.size() ? cell : padded(cell, widths[i]) + QStringLiteral("  ");
        }
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        out += text + QLatin1Char('\n');
    };
    appendLine(m_headers);
    QStringList rule;
    for (int width : widths)
        rule << QString(width, QLatin1Char('-'));
    appendLine(rule);
    for (const auto &row : m_rows)
        appendLine(row);
    return out;
}
