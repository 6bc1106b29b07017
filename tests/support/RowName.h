#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <ostream>
#include <string>
#include <type_traits>

// A table row labelled by a `name` text.
template <typename Row>
concept LabelledRow = std::is_convertible_v<decltype(Row::name), const char *>;

// Names a parameterised case after its row's name (letters and digits kept,
// anything else as '_'), so that ctest lists what each case is rather than
// a number or a dump of the row's bytes.
struct RowName {
    template <LabelledRow Row> std::string operator()(const testing::TestParamInfo<Row> &info) const
    {
        std::string name = info.param.name;
        for (char &character : name) {
            if (!std::isalnum(static_cast<unsigned char>(character)))
                character = '_';
        }
        return name;
    }
};

// Prints a row as its name, so that gtest shows no byte dump of it either.
// Found by argument lookup once a test file's namespace says
// `using rows::PrintTo;`.
namespace rows {
template <LabelledRow Row> void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}
} // namespace rows
