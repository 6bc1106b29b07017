#include "sampling/SensorReading.h"
#include "support/StoreTesting.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

using Reading = SensorReading<double>;

struct TextCase {
    const char *label;
    Reading reading;
    std::optional<QString> reason;
    QString source;
    QString status;
    QString display; // with unit "°C" and 1 digit, C locale
};

TEST(SensorReadingText, EveryCaseHasItsWords)
{
    ScopedDefaultLocale c(QLocale::c());
    using R = Reading;
    // clang-format off
    const std::vector<TextCase> cases = {
        {"available", R::available(61.26, "IOHID"), std::nullopt, "IOHID", "可用", "61.3°C"},
        {"unsupported", R::unsupported("没有"), u"没有"_s, "不支持", "不可用", "不可用"},
        {"permissionDenied", R::permissionDenied("拒绝"), u"拒绝"_s, "权限受限", "权限受限", "权限受限"},
        {"temporarilyUnavailable", R::temporarilyUnavailable("失败"), u"失败"_s, "暂不可用", "不可用", "不可用"},
        {"warmingUp", R::warmingUp(), std::nullopt, "采集中", "采集中", "采集中"},
    };
    // clang-format on
    for (const auto &row : cases) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(row.reading.reasonText(), row.reason);
        EXPECT_EQ(row.reading.sourceText(), row.source);
        EXPECT_EQ(row.reading.statusText(), row.status);
        EXPECT_EQ(row.reading.displayText("°C", 1), row.display);
        EXPECT_EQ(row.reading.value().has_value(), row.reading.isAvailable());
    }
}

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
