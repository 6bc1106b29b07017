#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <string>

// Names a parameterised case after its row's `description` (letters and
// digits kept, anything else as '_'), so that ctest lists what each case is
// rather than a number or a dump of the row's bytes.
struct RowName {
    template <typename Row> std::string operator()(const testing::TestParamInfo<Row> &info) const
    {
        std::string name;
        for (const char *text = info.param.description; *text; ++text) {
            const auto character = static_cast<unsigned char>(*text);
            name += std::isalnum(character) ? char(character) : '_';
        }
        return name;
    }
};
