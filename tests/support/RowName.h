#pragma once

#include <ostream>
#include <type_traits>

// A table row labelled by a `name` text.
template <typename Row>
concept LabelledRow = std::is_convertible_v<decltype(Row::name), const char *>;

// Prints a row as its name, so that gtest shows no byte dump of it. Found by
// argument lookup once a test file's namespace says `using rows::PrintTo;`.
namespace rows {
template <LabelledRow Row> void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}
} // namespace rows
