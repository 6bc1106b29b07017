#include "support/FixtureTable.h"

#include "support/Fixtures.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

QByteArray unescaped(const QByteArray &field)
{
    static const QByteArray plain = "nrt0\\";
    static const QByteArray meant("\n\r\t\0\\", 5);
    QByteArray bytes;
    for (qsizetype index = 0; index < field.size(); ++index) {
        const char next = index + 1 < field.size() ? field[index + 1] : '\0';
        if (field[index] != '\\' || next == '\0') {
            bytes += field[index];
        } else if (next == 'x' && index + 3 < field.size()) {
            bytes += char(field.mid(index + 2, 2).toInt(nullptr, 16));
            index += 3;
        } else {
            bytes += plain.contains(next) ? meant[plain.indexOf(next)] : next;
            ++index;
        }
    }
    return bytes;
}

} // namespace

std::optional<QByteArray> FixtureRow::field(std::size_t index) const
{
    return index < fields.size() ? std::optional(fields[index]) : std::nullopt;
}

std::optional<QString> FixtureRow::text(std::size_t index) const
{
    const std::optional<QByteArray> bytes = field(index);
    return bytes ? std::optional(QString::fromUtf8(*bytes)) : std::nullopt;
}

std::vector<FixtureRow> fixtureTable(const QString &name)
{
    QFile file(fixturePath(QStringLiteral("tables/") + name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    std::vector<FixtureRow> rows;
    int line = 0;
    for (const QByteArray &text : file.readAll().split('\n')) {
        ++line;
        if (text.isEmpty() || text.startsWith('#'))
            continue;
        FixtureRow row{name.toStdString() + ":" + std::to_string(line), {}};
        for (const QByteArray &field : text.split('\t'))
            row.fields.push_back(unescaped(field));
        rows.push_back(std::move(row));
    }
    EXPECT_FALSE(rows.empty()) << name.toStdString();
    return rows;
}
