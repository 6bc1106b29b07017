#pragma once

#include "presentation/shell/DashboardPage.h"

class DashboardStore;
class OverviewAttentionList;
class OverviewMetricStrip;
class OverviewRecentEventList;
class OverviewSystemTrend;
class QScrollArea;
class QVBoxLayout;

// The first page: four live numbers, the thirty-minute trend, the sources
// that need attention and the latest incidents. A press on a source selects
// it and opens the live diagnosis page.
class OverviewDashboardView final : public DashboardPage {
    Q_OBJECT

public:
    OverviewDashboardView(DashboardStore &store, const DashboardPageActions &actions,
                          QWidget *parent = nullptr);

    void applyLayout(const DashboardLayoutMetrics &layout) override;
    // Reads the store afresh; runs on every change the store announces.
    void refresh();

    OverviewMetricStrip *metricStrip() const { return m_strip; }
    OverviewSystemTrend *systemTrend() const { return m_trend; }
    OverviewAttentionList *attentionList() const { return m_attention; }
    OverviewRecentEventList *recentEvents() const { return m_events; }
    QScrollArea *scrollArea() const { return m_scroll; }

private:
    DashboardStore &m_store;
    DashboardPageActions m_actions;
    QScrollArea *m_scroll;
    QWidget *m_content;
    QVBoxLayout *m_contentLayout;
    OverviewMetricStrip *m_strip;
    OverviewSystemTrend *m_trend;
    OverviewAttentionList *m_attention;
    OverviewRecentEventList *m_events;
};
