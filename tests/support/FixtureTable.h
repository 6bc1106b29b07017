#pragma once

// Flat tables of text in and text out, kept as files under
// tests/fixtures/tables/: one row per line, fields split by tabs, each field
// with its escapes undone (\n, \r, \t, \0, \\, \xHH), so any byte can be
// written. Blank lines and lines starting with '#' (the rows' notes) are
// skipped. A row may be shorter than others: a field it lacks is absent.

#include <QByteArray>
#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct FixtureRow {
    std::string where; // "<table>:<line>", for the failure message
    std::vector<QByteArray> fields;

    // Field `index`, or nothing when the row has no such field.
    std::optional<QByteArray> field(std::size_t index) const;
    // The same as text (UTF-8).
    std::optional<QString> text(std::size_t index) const;
    // Field `index`, which the row must have, as bytes to parse.
    std::string_view view(std::size_t index) const
    {
        return {fields.at(index).constData(), std::size_t(fields.at(index).size())};
    }
};

std::vector<FixtureRow> fixtureTable(const QString &name);
