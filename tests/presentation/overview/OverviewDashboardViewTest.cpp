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
    sample.temperatureCelsius = available(70);
    const double loads[] = {52, 31, 30, 8, 7.9};
    for (int i = 0; i < 5; ++i)
        sample.processMetrics.append(
            makeProcess(200 + i, 1, QStringLiteral("worker%1").arg(i), loads[i]));
    return sample;
}

} // namespace

TEST(OverviewDashboardView, EmptyStoreShowsEmptyLists)
{
    auto store = makeStoreForTesting();
    OverviewDashboardView page(*store, {});
    EXPECT_TRUE(
        page.findChild<TrendChart *>(QStringLiteral("overviewTrendChart"))->content().isEmpty());
    EXPECT_EQ(page.attentionList()->visibleRowCount(), 0);
    EXPECT_FALSE(page.attentionList()->emptyLabel()->isHidden());
    EXPECT_EQ(page.recentEvents()->visibleRowCount(), 0);
    EXPECT_FALSE(page.recentEvents()->emptyLabel()->isHidden());
}

TEST(OverviewDashboardView, ShowsThreeSourcesAndIncidentsAndPressingASourceOpensItsDiagnosis)
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
    DashboardShell shell(*store, DashboardSection::overview, [] {});
    shell.resize(1440, 900);
    shell.show();
    auto *page = qobject_cast<OverviewDashboardView *>(shell.currentPage());
    ASSERT_NE(page, nullptr);
    // The first three incidents, newest first.
    EXPECT_EQ(page->recentEvents()->visibleRowCount(), 3);
    EXPECT_TRUE(page->recentEvents()->emptyLabel()->isHidden());
    EXPECT_TRUE(accessibleText(page->recentEvents()->row(0), QAccessible::Name)
                    .startsWith(QStringLiteral("负载恢复 worker0 · ")));
    // The first three of the four sources, with their badges.
    ASSERT_EQ(store->liveTasks().size(), 4u);
    OverviewAttentionList *list = page->attentionList();
    ASSERT_EQ(list->visibleRowCount(), 3);
    EXPECT_TRUE(list->emptyLabel()->isHidden());
    EXPECT_EQ(accessibleText(list->row(0), QAccessible::Name),
              QStringLiteral("worker0 PID 200 · worker0 52% 高影响"));
    EXPECT_EQ(list->row(0)->taskID(), store->liveTasks()[0].id);
    EXPECT_EQ(list->row(2)->taskID(), store->liveTasks()[2].id);

    const QString second = store->liveTasks()[1].id;
    ASSERT_NE(store->selectedTaskID(), second);
    QTest::mouseClick(page->attentionList()->row(1), Qt::LeftButton);
    EXPECT_EQ(store->selectedTaskID(), second);
    EXPECT_EQ(shell.selectedSection(), DashboardSection::liveDiagnosis);
}
