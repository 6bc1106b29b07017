#include "sampling/UnitText.h"
#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// The figures in the interface's formats, whatever the user's locale says.
TEST(UnitText, EachUnitWithItsDigitsGroupingAndRounding)
{
    const ScopedDefaultLocale german(QLocale(QLocale::German, QLocale::Germany));
    const std::pair<const char *, DisplayUnit> units[] = {
        {"percent", DisplayUnit::percent},
        {"celsius", DisplayUnit::celsius},
        {"degrees", DisplayUnit::degrees},
        {"rpm", DisplayUnit::rpm},
        {"lowerRpm", DisplayUnit::lowerRpm},
        {"megabytesPerSecond", DisplayUnit::megabytesPerSecond}};
    for (const FixtureRow &row : fixtureTable(QStringLiteral("unit-texts"))) {
        const auto unit = std::find_if(std::begin(units), std::end(units),
                                       [&](const auto &u) { return row.fields[1] == u.first; });
        ASSERT_NE(unit, std::end(units)) << row.where;
        const double value = row.fields[0].toDouble();
        const QByteArray &digits = row.fields[2];
        const QString text = digits == "whole"  ? wholeUnitText(value, unit->second)
                             : digits.isEmpty() ? unitText(value, unit->second)
                                                : unitText(value, unit->second, digits.toInt());
        EXPECT_EQ(text, *row.text(3)) << row.where;
    }
    using Reading = SensorReading<double>;
    EXPECT_EQ(readingText(Reading::available(7.0, "t"), DisplayUnit::rpm), QStringLiteral("7 RPM"));
    EXPECT_EQ(readingText(Reading::permissionDenied("x"), DisplayUnit::rpm),
              QStringLiteral("权限受限"));
    EXPECT_EQ(rateReadingText(Reading::available(2e6, "t")), QStringLiteral("2.0 MB/s"));
    EXPECT_EQ(rateReadingText(Reading::warmingUp()), QStringLiteral("采集中"));
    const auto memory =
        SensorReading<SystemMemoryUsage>::available({10'400'000'000, 16'000'000'000}, "t");
    EXPECT_EQ(memoryReadingText(memory), QStringLiteral("10.4 GB / 16.0 GB"));
}

TEST(UnitText, BytesChooseTheUnitByTheInputAndAlwaysUseAPoint)
{
    // A locale with a decimal comma must not leak into these texts.
    const ScopedDefaultLocale german(QLocale(QLocale::German, QLocale::Germany));
    for (const FixtureRow &row : fixtureTable(QStringLiteral("byte-texts"))) {
        const QString text = row.fields[0] == "memory" ? memoryText(row.fields[1].toULongLong())
                                                       : rateText(row.fields[1].toDouble());
        EXPECT_EQ(text, *row.text(2)) << row.where;
    }
}

} // namespace
