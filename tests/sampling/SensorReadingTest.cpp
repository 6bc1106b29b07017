#include "sampling/SensorReading.h"
#include "support/StoreTesting.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace {

using Reading = SensorReading<double>;

TEST(SensorReadingText, DisplayUsesTheInterfaceLocaleWithGroupingAndExactDigits)
{
    struct Row {
        QLocale locale;
        double value;
        const char *unit;
        int digits;
        QString expected;
    };
    const std::vector<Row> rows = {
        // Whatever the user's locale, the interface's (Chinese) formats.
        {QLocale::c(), 2400.4, " RPM", 0, "2,400 RPM"},
        {QLocale::c(), 0.5, "%", 0, "1%"},
        {QLocale(QLocale::English, QLocale::UnitedStates), 12345.67, " RPM", 0, "12,346 RPM"},
        {QLocale(QLocale::German, QLocale::Germany), 61.26, "°C", 1, "61.3°C"},
        {QLocale(QLocale::Chinese, QLocale::China), 1234.0, "°C", 1, "1,234.0°C"},
    };
    for (const auto &row : rows) {
        ScopedDefaultLocale scope(row.locale);
        SCOPED_TRACE(row.locale.name().toStdString());
        EXPECT_EQ(Reading::available(row.value, "s").displayText(row.unit, row.digits),
                  row.expected);
    }
}

} // namespace
