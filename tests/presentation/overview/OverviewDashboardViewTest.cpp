#include "presentation/overview/OverviewDashboardView.h"

#include "presentation/PresentationTesting.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/TrendChart.h"
#include "presentation/overview/OverviewAttentionList.h"
#include "presentation/overview/OverviewMetricStrip.h"
#include "presentation/overview/OverviewRecentEventList.h"
#include "presentation/overview/OverviewSystemTrend.h"
#include "presentation/shell/DashboardShell.h"
#include "support/StoreTesting.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

SensorReading<double> available(double value)
{
    return SensorReading<double>::available(value, QStringLiteral("test"));
}

// A sample whose CPU lies on five processes of five sources, so that the
// store lists four live tasks, the busiest first.
SystemMetricSample busySample(double seconds)
{
    SystemMetricSample sample = makeSample(seconds);
    sample.cpuUsage = available(64);
    sample.temperatureCelsius = available(70);
    sample.fanRPM = available(2400);
    sample.diskBytesPerSecond = available(3e6);
    const double loads[] = {52, 31, 30, 8, 7.9};
    for (int i = 0; i < 5; ++i)
        sample.processMetrics.append(
            makeProcess(200 + i, 1, QStringLiteral("worker%1").arg(i), loads[i]));
    return sample;
}

std::vector<OverviewMetricCard *> cardsOf(OverviewDashboardView &page)
{
    std::vector<OverviewMetricCard *> cards;
    for (int i = 0; i < 4; ++i)
        cards.push_back(page.metricStrip()->card(i));
    return cards;
}

} // namespace

TEST(OverviewDashboardView, EmptyStoreShowsCollectingWordsAndEmptyLists)
{
    auto store = makeStoreForTesting();
    OverviewDashboardView page(*store, {});
    EXPECT_EQ(page.objectName(), QStringLiteral("page-overview"));
    for (OverviewMetricCard *card : cardsOf(page)) {
        EXPECT_TRUE(card->objectName().startsWith(QStringLiteral("liveMetric-")));
        EXPECT_TRUE(accessibleText(card, QAccessible::Name).endsWith(QStringLiteral(" 采集中")))
            << card->objectName().toStdString();
    }
    auto *chart = page.findChild<TrendChart *>(QStringLiteral("overviewTrendChart"));
    ASSERT_NE(chart, nullptr);
    EXPECT_TRUE(chart->content().isEmpty());
    EXPECT_EQ(accessibleText(chart, QAccessible::Name), QStringLiteral("30 分钟系统趋势"));
    EXPECT_EQ(page.attentionList()->visibleRowCount(), 0);
    EXPECT_FALSE(page.attentionList()->emptyLabel()->isHidden());
    EXPECT_EQ(page.attentionList()->emptyLabel()->accessibleName(),
              QStringLiteral("当前没有持续高负载进程"));
    EXPECT_EQ(page.recentEvents()->visibleRowCount(), 0);
    EXPECT_EQ(page.recentEvents()->emptyLabel()->accessibleName(),
              QStringLiteral("本次会话暂无升温事件"));
}

TEST(OverviewDashboardView, ShowsTheFirstThreeSourcesWithTheirBadges)
{
    auto store = makeStoreForTesting();
    store->ingest(busySample(1000));
    ASSERT_EQ(store->liveTasks().size(), 4u);
    OverviewDashboardView page(*store, {});
    OverviewAttentionList *list = page.attentionList();
    ASSERT_EQ(list->visibleRowCount(), 3);
    EXPECT_TRUE(list->emptyLabel()->isHidden());
    EXPECT_TRUE(list->row(0)->isVisibleTo(&page));
    const QString first = accessibleText(list->row(0), QAccessible::Name);
    EXPECT_EQ(first, QStringLiteral("worker0 PID 200 · worker0 52% 高影响"));
    EXPECT_TRUE(
        accessibleText(list->row(2), QAccessible::Name).endsWith(QStringLiteral("30% 高影响")));
    EXPECT_EQ(list->row(0)->taskID(), store->liveTasks()[0].id);
    EXPECT_EQ(list->row(2)->taskID(), store->liveTasks()[2].id);
}

TEST(OverviewDashboardView, PressingASourceSelectsItAndOpensTheDiagnosisPage)
{
    auto store = makeStoreForTesting();
    store->ingest(busySample(1000));
    DashboardShell shell(*store, DashboardSection::overview, [] {});
    shell.resize(1440, 900);
    shell.show();
    auto *page = qobject_cast<OverviewDashboardView *>(shell.currentPage());
    ASSERT_NE(page, nullptr);
    const QString second = store->liveTasks()[1].id;
    ASSERT_NE(store->selectedTaskID(), second);
    QTest::mouseClick(page->attentionList()->row(1), Qt::LeftButton);
    EXPECT_EQ(store->selectedTaskID(), second);
    EXPECT_EQ(shell.selectedSection(), DashboardSection::liveDiagnosis);
}

TEST(OverviewDashboardView, IncidentsShowTheFirstThreeNewestFirst)
{
    auto store = makeStoreForTesting();
    // Hot with a task opens an incident; a cool sample closes it; four times.
    double time = 1000;
    for (int episode = 0; episode < 4; ++episode) {
        SystemMetricSample hot = busySample(time += 2);
        hot.temperatureCelsius = available(90);
        store->ingest(hot);
        store->ingest(busySample(time += 2));
    }
    ASSERT_GE(store->incidents().size(), 4u);
    OverviewDashboardView page(*store, {});
    EXPECT_EQ(page.recentEvents()->visibleRowCount(), 3);
    EXPECT_TRUE(page.recentEvents()->emptyLabel()->isHidden());
    EXPECT_TRUE(accessibleText(page.recentEvents()->row(0), QAccessible::Name)
                    .startsWith(QStringLiteral("负载恢复 worker0 · ")));
}

TEST(OverviewDashboardView, ScrollsOnlyInAShortWindow)
{
    auto store = makeStoreForTesting();
    OverviewDashboardView page(*store, {});
    page.applyLayout(DashboardLayoutMetrics::forSize(1200, 700));
    EXPECT_EQ(page.scrollArea()->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    EXPECT_GE(page.scrollArea()->widget()->minimumHeight(), 700);
    page.applyLayout(DashboardLayoutMetrics::forSize(1200, 800));
    EXPECT_EQ(page.scrollArea()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

TEST(OverviewDashboardView, AbsurdReadingsAndAnHourOfHistoryStayInsideThePlot)
{
    struct Row {
        const char *name;
        double cpu;
        double temperature;
        double fan;
        double disk;
        int samples;
    };
    const Row rows[] = {
        {"120 °C", 100, 120, 30'000, 10e9, 40},
        {"−5 °C", 0, -5, 0, 0, 40},
        {"one point", 50, 60, 2000, 1e6, 1},
        {"an hour", 40, 65, 2500, 2e6, 1800},
    };
    for (const Row &row : rows) {
        auto store = makeStoreForTesting();
        for (int i = 0; i < row.samples; ++i) {
            SystemMetricSample sample = makeSample(10'000 + 2.0 * i);
            sample.cpuUsage = available(row.cpu);
            sample.temperatureCelsius = available(row.temperature);
            sample.fanRPM = available(row.fan);
            sample.diskBytesPerSecond = available(row.disk);
            store->ingest(sample);
        }
        OverviewDashboardView page(*store, {});
        page.resize(1100, 800);
        page.show();
        QApplication::processEvents();
        TrendChart *chart = page.systemTrend()->chart();
        EXPECT_FALSE(chart->content().isEmpty()) << row.name;
        // Marks sit on the plot's edge: allow their radius (and half a line).
        const QRect allowed = chart->plotRect().toAlignedRect().adjusted(-5, -5, 5, 5);
        EXPECT_EQ(tonePixelsOutside(chart, allowed, QColor::fromRgb(0xFF9F0A)), 0) << row.name;
        EXPECT_EQ(tonePixelsOutside(chart, allowed, QColor::fromRgb(0x0A84FF)), 0) << row.name;
    }
}
