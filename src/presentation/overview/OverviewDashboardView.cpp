#include "presentation/overview/OverviewDashboardView.h"

#include "dashboard/DashboardStore.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/RefreshWhileShown.h"
#include "presentation/overview/OverviewAttentionList.h"
#include "presentation/overview/OverviewMetricStrip.h"
#include "presentation/overview/OverviewRecentEventList.h"
#include "presentation/overview/OverviewSystemTrend.h"
#include "presentation/overview/OverviewTexts.h"
#include "presentation/shell/PageScrollArea.h"

#include <QScrollArea>

OverviewDashboardView::OverviewDashboardView(DashboardStore &store,
                                             const DashboardPageActions &actions, QWidget *parent)
    : DashboardPage(DashboardSection::overview, parent), m_store(store), m_actions(actions)
{
    m_strip = new OverviewMetricStrip;
    m_trend = new OverviewSystemTrend;
    m_trend->setFixedHeight(292);
    m_attention = new OverviewAttentionList;
    m_events = new OverviewRecentEventList;
    m_attention->setOnSelect([this](const QString &taskID) {
        m_store.selectTask(taskID);
        if (m_actions.openDiagnosis)
            m_actions.openDiagnosis();
    });

    auto *lists = new QWidget;
    lists->setFixedHeight(240);
    attach(lists, row(32, {}, {LayoutItem(m_attention, 1), LayoutItem(m_events, 1)}));

    m_content = new QWidget;
    m_contentLayout = column(24, {32, 24, 32, 28}, {m_strip, m_trend, lists, flexible()});
    attach(m_content, m_contentLayout);
    m_scroll = makePageScrollArea(m_content);
    attach(this, column(0, {}, {m_scroll}));

    refreshWhileShown(this, &m_store, &DashboardStore::changed, [this] { refresh(); });
    refresh();
}

void OverviewDashboardView::applyLayout(const DashboardLayoutMetrics &layout)
{
    const int padding = static_cast<int>(layout.pageHorizontalPadding);
    m_contentLayout->setContentsMargins(padding, 24, padding, 28);
    setPageScrolling(m_scroll, layout.isShort, 700);
}

void OverviewDashboardView::refresh()
{
    const std::vector<HeatTrendPoint> points = m_store.heatTrendPoints(kOverviewTrendWindowSeconds);
    m_strip->setCards(overviewMetricCards(m_store.latestSystemSample(), points));
    m_trend->setPoints(points);
    m_attention->setTasks(m_store.liveTasks(), m_store.selectedTaskID());
    m_events->setIncidents(m_store.incidents());
}
