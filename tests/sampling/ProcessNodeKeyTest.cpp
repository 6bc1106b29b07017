#include "sampling/ProcessMetric.h"
#include "support/FixtureTable.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ProcessNodeKey, StartTimeIsShortestRoundTripWithPointZeroOnWholeNumbers)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("process-node-keys"))) {
        const double seconds = std::stod(std::string(row.view(0)));
        EXPECT_EQ(processNodeKey(42, TimePoint::fromSecondsSince1970(seconds)), *row.text(1))
            << row.where;
    }
}

} // namespace
