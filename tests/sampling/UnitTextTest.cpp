#include "sampling/UnitText.h"
#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

// The figures in the interface's formats, whatever the user's locale says.
TEST(UnitText, EachUnitWithItsDigitsGroupingAndRounding)
{
    const ScopedDefaultLocale german(QLocale(QLocale::German, QLocale::Germany));
    using U = DisplayUnit;
    struct Row {
        double value;
        U unit;
        int digits; // -1: the unit's own
        bool whole; // wholeUnitText
        const char *text;
    };
    // clang-format off
    const Row rows[] = {
        {61.26, U::celsius, -1, false, "61.3°C"}, {-5.0, U::celsius, -1, false, "-5.0°C"},
        {1234.4, U::percent, -1, false, "1,234%"}, {41.5, U::percent, 1, false, "41.5%"},
        {2150.0, U::rpm, -1, false, "2,150 RPM"}, {1900.2, U::lowerRpm, -1, false, "1,900 rpm"},
        {12.34, U::megabytesPerSecond, -1, false, "12.3 MB/s"}, {58.0, U::degrees, -1, false, "58°"},
        // Whole numbers: plain digits, halves away from zero, broken values held.
        {1234.0, U::percent, -1, true, "1234%"}, {42.5, U::percent, -1, true, "43%"},
        {-0.5, U::percent, -1, true, "-1%"}, {nan, U::percent, -1, true, "0%"},
        {1e300, U::degrees, -1, true, "1000000000000000°"},
    };
    // clang-format on
    for (const Row &row : rows) {
        const QString text = row.whole        ? wholeUnitText(row.value, row.unit)
                             : row.digits < 0 ? unitText(row.value, row.unit)
                                              : unitText(row.value, row.unit, row.digits);
        EXPECT_EQ(text, QString::fromUtf8(row.text)) << row.text;
    }
    using Reading = SensorReading<double>;
    EXPECT_EQ(readingText(Reading::available(7.0, "t"), U::rpm), QStringLiteral("7 RPM"));
    EXPECT_EQ(readingText(Reading::permissionDenied("x"), U::rpm), QStringLiteral("权限受限"));
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
