#include "presentation/hardware/HardwareTexts.h"
#include "presentation/hardware/HardwareChartContent.h"

#include "presentation/PresentationTesting.h"
#include "presentation/kit/DashboardPalette.h"
#include "support/FixtureTable.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {

namespace P = DashboardPalette;

HardwareTrendPoint trendPoint(double elapsed, double value)
{
    HardwareTrendPoint point{.elapsedSeconds = elapsed, .cpu = value, .gpu = value};
    point.memoryPercent = point.temperature = point.fanRPM = value;
    point.diskBytesPerSecond = value * 1'000'000;
    return point;
}

SystemMetricSample sampleOf(SensorReadingCase readingCase,
                            SystemThermalState thermal = SystemThermalState::nominal)
{
    SystemMetricSample sample;
    sample.thermalState = thermal;
    sample.temperatureCelsius = readingOf(readingCase, 61.26);
    sample.cpuUsage = readingOf(readingCase, 41.5);
    sample.gpuUsage = readingOf(readingCase, 12.4);
    sample.memoryUsage =
        readingOf(readingCase, SystemMemoryUsage{10'400'000'000ULL, 16'000'000'000ULL});
    sample.diskBytesPerSecond = readingOf(readingCase, 7'200'000.0);
    sample.fanRPM = readingOf(readingCase, 1900.4);
    return sample;
}

constexpr std::array kCategoryNames = {"temperature", "cpu", "gpu", "memory", "disk", "fan"};

class HardwareTextsTest : public ::testing::Test {
    ScopedLocale m_locale;
};

} // namespace

// A series' figures and scale: percents whole and ungrouped, RPM whole and
// grouped, the rest to a tenth; fixed scales, or the peak with headroom.
TEST_F(HardwareTextsTest, FiguresAndScaleOfTheSeriesByCategory)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("hardware-series"))) {
        const auto name = std::find(kCategoryNames.begin(), kCategoryNames.end(), row.fields[0]);
        ASSERT_NE(name, kCategoryNames.end()) << row.where;
        const HardwareCategory category = kAllHardwareCategories[name - kCategoryNames.begin()];
        std::vector<QPointF> series;
        for (const QByteArray &value : row.fields[1].split(' ')) {
            if (!value.isEmpty())
                series.emplace_back(2.0 * double(series.size() + 1), value.toDouble());
        }
        EXPECT_EQ(hardwareSeriesFigures(category, series),
                  (HardwareSeriesFigures{*row.text(2), *row.text(3)}))
            << row.where;
        const HardwareScale scale = hardwareScale(category, series);
        EXPECT_DOUBLE_EQ(scale.lowerBound, row.fields[4].toDouble()) << row.where;
        EXPECT_DOUBLE_EQ(scale.upperBound, row.fields[5].toDouble()) << row.where;
    }
}

TEST_F(HardwareTextsTest, SeriesTakeTheCategoryFieldAndDropGaps)
{
    std::vector<HardwareTrendPoint> points = {trendPoint(0, 3), trendPoint(30, 20),
                                              trendPoint(60, 5)};
    points[1].cpu.reset();
    points[2].fanRPM = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(hardwareSeries(HardwareCategory::cpu, points),
              (std::vector<QPointF>{{0, 3}, {60, 5}}));
    EXPECT_EQ(hardwareSeries(HardwareCategory::disk, points),
              (std::vector<QPointF>{{0, 3}, {30, 20}, {60, 5}}));
    EXPECT_EQ(hardwareSeries(HardwareCategory::fan, points).size(), 2u);
    EXPECT_TRUE(hardwareNewestPointHasValue(HardwareCategory::cpu, points));
    EXPECT_FALSE(hardwareNewestPointHasValue(HardwareCategory::fan, points));
    EXPECT_FALSE(hardwareNewestPointHasValue(HardwareCategory::cpu, {}));
}

TEST_F(HardwareTextsTest, TicksAreRoundInsideTheScaleAndLabelled)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("hardware-scale-ticks"))) {
        const QList<QByteArray> bounds = row.fields[0].split(' ');
        std::vector<double> expected;
        for (const QByteArray &tick : row.fields.at(1).split(' ')) {
            if (!tick.isEmpty())
                expected.push_back(tick.toDouble());
        }
        EXPECT_EQ(hardwareScaleTicks({bounds[0].toDouble(), bounds[1].toDouble()}), expected)
            << row.where;
    }
    EXPECT_EQ(hardwareAxisValueText(HardwareCategory::temperature, 45), QStringLiteral("45"));
    EXPECT_EQ(hardwareAxisValueText(HardwareCategory::cpu, 40), QStringLiteral("40"));
    EXPECT_EQ(hardwareAxisValueText(HardwareCategory::disk, 2.5), QStringLiteral("2.5"));
    EXPECT_EQ(hardwareAxisValueText(HardwareCategory::disk, 4), QStringLiteral("4"));
    EXPECT_EQ(hardwareAxisValueText(HardwareCategory::fan, 5000), QStringLiteral("5,000"));
}

TEST_F(HardwareTextsTest, CurrentFigureOfAReadingAndOfAnUnreadOne)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("hardware-current-texts"))) {
        auto readingCase = SensorReadingCase::available;
        while (sensorReadingCaseName(readingCase) != *row.text(0) &&
               readingCase != SensorReadingCase::warmingUp)
            readingCase = SensorReadingCase(int(readingCase) + 1);
        ASSERT_EQ(sensorReadingCaseName(readingCase), *row.text(0)) << row.where;
        for (std::size_t i = 0; i < kAllHardwareCategories.size(); ++i) {
            EXPECT_EQ(hardwareCurrentText(kAllHardwareCategories[i], sampleOf(readingCase)),
                      *row.text(i + 1))
                << row.where << " " << kCategoryNames[i];
            EXPECT_EQ(hardwareCurrentText(kAllHardwareCategories[i], std::nullopt),
                      QStringLiteral("采集中"));
        }
    }
    SystemMetricSample noMemory = sampleOf(SensorReadingCase::available);
    noMemory.memoryUsage = SensorReading<SystemMemoryUsage>::available({0, 0}, QStringLiteral("t"));
    EXPECT_EQ(hardwareCurrentText(HardwareCategory::memory, noMemory), QStringLiteral("0%"));
}

// Temperature by the thermal state, falling back to the reading's reason
// without one; the other categories by their reading's availability.
TEST_F(HardwareTextsTest, StatusWordsByState)
{
    using C = SensorReadingCase;
    using T = SystemThermalState;
    struct Row {
        HardwareCategory category;
        std::optional<SystemMetricSample> sample;
        HardwareStatusLine line;
    };
    const Row rows[] = {
        {HardwareCategory::temperature,
         sampleOf(C::warmingUp, T::fair),
         {"热状态偏热", P::warning}},
        {HardwareCategory::temperature, std::nullopt, {"热状态采集中", P::textTertiary}},
        {HardwareCategory::temperature,
         sampleOf(C::unsupported, T::unknown),
         {"none", P::textTertiary}},
        {HardwareCategory::fan,
         sampleOf(C::permissionDenied, T::critical),
         {"当前不可用", P::textTertiary}},
        {HardwareCategory::memory, std::nullopt, {"正在采集", P::warning}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(hardwareStatusLine(row.category, row.sample), row.line)
            << row.line.text.toStdString();
}

TEST_F(HardwareTextsTest, SensorTableColumnsAndLocations)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("hardware-sensor-table"))) {
        if (row.fields[0] == "location") {
            DashboardSensorStatus status;
            status.id = *row.text(1);
            status.source = QStringLiteral("正在建立数据源连接");
            EXPECT_EQ(sensorLocationText(status), *row.text(2)) << row.where;
            continue;
        }
        const SensorTableColumns columns = sensorTableColumns(row.fields[1].toDouble());
        const QList<QByteArray> widths = row.fields[2].split(' ');
        EXPECT_NEAR(columns.sensor, widths[0].toDouble(), 1e-9) << row.where;
        EXPECT_NEAR(columns.location, widths[1].toDouble(), 1e-9) << row.where;
        EXPECT_NEAR(columns.reading, widths[2].toDouble(), 1e-9) << row.where;
        EXPECT_NEAR(columns.status, widths[3].toDouble(), 1e-9) << row.where;
    }
}

TEST(HardwareChartContentTest, ChartFollowsTheCategory)
{
    const std::vector<HardwareTrendPoint> points = {trendPoint(0, 20), trendPoint(60, 5000)};
    const TrendChartContent fan = hardwareChartContent(HardwareCategory::fan, points);
    ASSERT_EQ(fan.series.size(), 1u);
    EXPECT_EQ(fan.series[0].color, QColor::fromRgb(P::chartBlue));
    EXPECT_DOUBLE_EQ(fan.y.upperBound, 5750);
    EXPECT_EQ(fan.x.upperBound, 60.0);
    ASSERT_EQ(fan.x.labels.size(), 3u);
    EXPECT_EQ(fan.x.labels[0].text, QStringLiteral("-60s"));
    EXPECT_EQ(fan.x.labels[2].text, QStringLiteral("现在"));

    const TrendChartContent temperature =
        hardwareChartContent(HardwareCategory::temperature, points);
    EXPECT_EQ(temperature.series[0].area->baseValue, 30.0);
    EXPECT_EQ(temperature.y.labels.front().text, QStringLiteral("30"));

    std::vector<HardwareTrendPoint> gap = points;
    gap.back().gpu.reset();
    const TrendChartContent gpu = hardwareChartContent(HardwareCategory::gpu, gap);
    EXPECT_EQ(gpu.series[0].points.size(), 1u);
    EXPECT_FALSE(gpu.series[0].lastPointMarkArea.has_value());

    const TrendChartContent empty = hardwareChartContent(HardwareCategory::memory, {});
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.style.emptyText, QStringLiteral("正在采集内存趋势…"));
    const std::optional<QString> reason = hardwareUnavailableReason(
        HardwareCategory::memory, sampleOf(SensorReadingCase::temporarilyUnavailable));
    EXPECT_EQ(reason, QStringLiteral("failed"));
    EXPECT_EQ(hardwareChartContent(HardwareCategory::memory, {}, reason).style.emptyText,
              QStringLiteral("failed"));
    EXPECT_EQ(
        hardwareUnavailableReason(HardwareCategory::memory, sampleOf(SensorReadingCase::warmingUp)),
        std::nullopt);
}
