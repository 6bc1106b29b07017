#include "presentation/overview/OverviewTexts.h"
#include "presentation/overview/OverviewTrendContent.h"

#include "presentation/PresentationTesting.h"
#include "presentation/kit/DashboardPalette.h"
#include "support/FixtureTable.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

namespace P = DashboardPalette;

HeatTrendPoint point(double elapsed, std::optional<double> cpu,
                     std::optional<double> temperature = std::nullopt)
{
    return {.elapsedSeconds = elapsed,
            .cpu = cpu,
            .temperature = temperature,
            .thermalState = SystemThermalState::nominal};
}

SystemMetricSample sampleWith(SystemThermalState thermal)
{
    SystemMetricSample sample;
    sample.timestamp = TimePoint::fromSecondsSince1970(1'700'000'000);
    sample.thermalState = thermal;
    return sample;
}

const char *const kSampling = "采集中";

class OverviewTextsTest : public ::testing::Test {
    ScopedLocale m_locale;
};

} // namespace

TEST_F(OverviewTextsTest, CPUMeanTakesTheLastFiveMinutesAndSkipsMissingValues)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("overview-cpu-means"))) {
        std::vector<HeatTrendPoint> points;
        for (const QByteArray &pair : row.fields[0].split(' ')) {
            const QList<QByteArray> parts = pair.split(':');
            if (parts.size() == 2)
                points.push_back(
                    point(parts[0].toDouble(),
                          parts[1] == "-" ? std::nullopt : std::optional(parts[1].toDouble())));
        }
        EXPECT_EQ(overviewRecentCPUAverageText(points), *row.text(1)) << row.where;
    }
}

TEST_F(OverviewTextsTest, ImpactBadgeChangesAtEightAndThirtyPercent)
{
    const std::pair<double, OverviewImpactBadge> rows[] = {
        {7.99, {QStringLiteral("低影响"), P::success, P::successBackground}},
        {8.0, {QStringLiteral("中影响"), P::accent, P::accentBackground}},
        {29.99, {QStringLiteral("中影响"), P::accent, P::accentBackground}},
        {30.0, {QStringLiteral("高影响"), P::warning, P::warningBackground}},
        {std::numeric_limits<double>::quiet_NaN(),
         {QStringLiteral("低影响"), P::success, P::successBackground}},
    };
    for (const auto &[cpu, badge] : rows)
        EXPECT_EQ(overviewImpactBadge(cpu), badge) << cpu;
}

// The words of each reading case are the reading's own, tested with it: one
// unread case shows the cards use them.
TEST_F(OverviewTextsTest, CardsShowReadingsAndTheirCases)
{
    using C = SensorReadingCase;
    // A case, the temperature, CPU, fan and disk readings, and the cards' values in that order.
    const std::tuple<C, std::array<double, 4>, std::array<const char *, 4>> rows[] = {
        {C::available, {61.26, 41.6, 1900.2, 7.2e6}, {"61.3°C", "42%", "1,900 rpm", "7.2 MB/s"}},
        {C::permissionDenied, {}, {"权限受限", "权限受限", "权限受限", "权限受限"}},
    };
    for (const auto &[readingCase, readings, values] : rows) {
        SystemMetricSample sample = sampleWith(SystemThermalState::fair);
        sample.temperatureCelsius = readingOf(readingCase, readings[0]);
        sample.cpuUsage = readingOf(readingCase, readings[1]);
        sample.fanRPM = readingOf(readingCase, readings[2]);
        sample.diskBytesPerSecond = readingOf(readingCase, readings[3]);
        const auto cards = overviewMetricCards(sample, {});
        for (std::size_t i = 0; i < cards.size(); ++i)
            EXPECT_EQ(cards[i].value, QString::fromUtf8(values[i])) << values[i];
        // The thermal state is not a reading: it is named whatever the sensors say.
        EXPECT_EQ(cards[0].caption, QStringLiteral("当前温度 · 状态尚可"));
    }
    const auto hot =
        overviewMetricCards(sampleWith(SystemThermalState::critical), {point(1800, 100.0, -5.0)});
    EXPECT_EQ(hot[0].caption, QStringLiteral("当前温度 · 状态临界"));
    EXPECT_EQ(hot[1].caption, QStringLiteral("CPU 负载 · 近 5 分钟平均 100%"));

    const auto cards = overviewMetricCards(std::nullopt, {});
    for (const OverviewMetricCardContent &card : cards)
        EXPECT_EQ(card.value, QString::fromUtf8(kSampling)) << card.identifier.toStdString();
    EXPECT_EQ(cards[0].caption, QStringLiteral("当前温度 · 采集中"));
    EXPECT_EQ(cards[1].caption, QStringLiteral("CPU 负载 · 近 5 分钟平均 采集中"));
    EXPECT_EQ(cards[2].caption, QStringLiteral("风扇转速 · 自动调速"));
    EXPECT_EQ(cards[3].accessibleLabel(), QStringLiteral("磁盘 I/O · 当前合计 采集中"));
}

TEST_F(OverviewTextsTest, AxisLabelsCountMinutesAndShortTimesHaveNoDate)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("overview-axis-labels")))
        EXPECT_EQ(overviewTrendAxisLabel(row.fields[0].toDouble()), *row.text(1)) << row.where;
    const QString text = overviewShortTimeText(TimePoint::fromSecondsSince1970(1'795'444'200));
    EXPECT_FALSE(text.isEmpty());
    EXPECT_FALSE(text.contains(QStringLiteral("2026")));
    EXPECT_TRUE(overviewShortTimeText(TimePoint::fromSecondsSince1970(std::nan(""))).isEmpty());
    EXPECT_TRUE(overviewShortTimeText(TimePoint::fromSecondsSince1970(1e300)).isEmpty());
}

TEST(OverviewTrendContentTest, FixedScalesWithTheOverlayOrEachSeriesOverItsBase)
{
    const TrendChartContent content = overviewTrendContent({});
    EXPECT_TRUE(content.isEmpty());
    EXPECT_EQ(content.style.emptyText, QStringLiteral("正在采集系统趋势…"));
    EXPECT_EQ(std::pair(content.x.lowerBound, content.x.upperBound), std::pair(0.0, 1800.0));
    EXPECT_EQ(std::pair(content.y.lowerBound, content.y.upperBound), std::pair(0.0, 100.0));
    EXPECT_FALSE(content.y.showsLabels);
    ASSERT_FALSE(content.x.labels.empty());
    EXPECT_EQ(content.x.labels.back().text, QStringLiteral("现在"));
    EXPECT_EQ(content.x.labels.front().text, QStringLiteral("-30 分钟"));

    // One point: each series in its look over its base.
    const TrendChartContent one = overviewTrendContent({point(1800, 40, 60)});
    const TrendChartSeries &cpu = one.series[0];
    const TrendChartSeries &temperature = one.series[1];
    EXPECT_EQ(cpu.name, QStringLiteral("CPU"));
    EXPECT_EQ(cpu.area->baseValue, 0.0);
    EXPECT_EQ(temperature.name, QStringLiteral("温度"));
    EXPECT_EQ(temperature.area->baseValue, 0.0); // no band edge inside the plot
    EXPECT_EQ(temperature.points.front(), QPointF(1800, 60));
}
