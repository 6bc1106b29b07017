#include "sampling/SensorReading.h"
#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(SensorReadingText, DisplayUsesTheInterfaceLocaleWithGroupingAndExactDigits)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("reading-display-texts"))) {
        ScopedDefaultLocale scope{QLocale(*row.text(0))};
        const auto reading =
            SensorReading<double>::available(std::stod(std::string(row.view(1))), "s");
        EXPECT_EQ(reading.displayText(*row.text(2), row.text(3)->toInt()), *row.text(4))
            << row.where;
    }
}

} // namespace
