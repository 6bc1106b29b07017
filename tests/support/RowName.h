#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <ostream>
#include <string>
#include <type_traits>

// A table row labelled by a `description` or a `name` text.
template <typename Row>
concept DescribedRow = std::is_convertible_v<decltype(Row::description), const char *>;
template <typename Row>
concept LabelledRow = DescribedRow<Row> || std::is_convertible_v<decltype(Row::name), const char *>;

// A row's label: its `description`, or else its `name`.
template <LabelledRow Row> const char *rowLabel(const Row &row)
{
    if constexpr (DescribedRow<Row>)
        return row.description;
    else
        return row.name;
}

// Names a parameterised case after its row's label (letters and digits
// kept, anything else as '_'), so that ctest lists what each case is rather
// than a number or a dump of the row's bytes.
struct RowName {
    template <LabelledRow Row> std::string operator()(const testing::TestParamInfo<Row> &info) const
    {
        std::string name;
        for (const char *text = rowLabel(info.param); *text; ++text) {
            const auto character = static_cast<unsigned char>(*text);
            name += std::isalnum(character) ? char(character) : '_';
        }
        return name;
    }
};

// Prints a row as its label, so that gtest shows no byte dump of it either.
// Found by argument lookup once a test file's namespace says
// `using rows::PrintTo;`.
namespace rows {
template <LabelledRow Row> void PrintTo(const Row &row, std::ostream *out)
{
    *out << rowLabel(row);
}
} // namespace rows
