#include "sampling/ProcessMetric.h"

#include <gtest/gtest.h>

namespace {

TEST(ProcessNodeKey, StartTimeIsShortestRoundTripWithPointZeroOnWholeNumbers)
{
    struct Row {
        double seconds;
        const char *expected;
    };
    const std::vector<Row> rows = {
        {1700000000.0, "42-1700000000.0"},
        {1700000000.25, "42-1700000000.25"},
        {1795383621.0107465, "42-1795383621.0107465"},
        {0.1, "42-0.1"},
        {0.0, "42-0.0"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(processNodeKey(42, TimePoint::fromSecondsSince1970(row.seconds)), row.expected);
}

} // namespace
