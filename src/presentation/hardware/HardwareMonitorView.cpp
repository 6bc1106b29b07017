#include "presentation/hardware/HardwareMonitorView.h"

#include "dashboard/DashboardStore.h"
#include "presentation/hardware/HardwareCategoryTabs.h"
#include "presentation/hardware/HardwareChartContent.h"
#include "presentation/hardware/HardwareSensorTable.h"
#include "presentation/hardware/HardwareSummaryRow.h"
#include "presentation/hardware/HardwareTexts.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "presentation/kit/RefreshWhileShown.h"
#include "presentation/kit/TrendChart.h"
#include "presentation/shell/PageScrollArea.h"

#include <QScrollArea>

HardwareMonitorView::HardwareMonitorView(DashboardStore &store, QWidget *parent)
    : DashboardPage(DashboardSection::hardwareMonitor, parent), m_store(store)
{
    m_tabs = new HardwareCategoryTabs;
    connect(m_tabs, &HardwareCategoryTabs::categoryRequested, this,
            &HardwareMonitorView::setCategory);
    m_summary = new HardwareSummaryRow;

    m_chartTitle =
        new TextLabel(QString(), 18, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    setAccessibility(m_chartTitle, QStringLiteral("hardwareTrend-title"));
    auto *chartHeader = new QWidget;
    chartHeader->setFixedHeight(30);
    auto *chartHeaderRow = row(0, {}, {m_chartTitle, flexible()});
    chartHeaderRow->setAlignment(m_chartTitle, Qt::AlignVCenter);
    attach(chartHeader, chartHeaderRow);
    m_chart = new TrendChart;
    setAccessibility(m_chart, QStringLiteral("hardwareTrendChart"));
    setAccessibleRole(m_chart, QAccessible::Chart);
    m_chartBlock = new QWidget;
    attach(m_chartBlock, column(10, {}, {chartHeader, LayoutItem(m_chart, 1)}));

    auto *workspace = new QWidget;
    setAccessibility(workspace, QStringLiteral("hardwareMetricWorkspace"));
    setAccessibleRole(workspace, QAccessible::Grouping);
    // No side padding: the workspace draws no box of its own, so an inset
    // would only shift the tabs, figures and chart off the title and table.
    attach(workspace,
           column(0, {0, 14, 0, 14},
                  {LayoutItem(m_tabs, 0, Qt::AlignLeft), m_summary, new HairLine, m_chartBlock}));

    m_table = new HardwareSensorTable;
    auto *content = new QWidget;
    m_contentLayout = column(20, {32, 20, 32, 24}, {workspace, LayoutItem(m_table, 1)});
    attach(content, m_contentLayout);
    m_scroll = makePageScrollArea(content);
    attach(this, column(0, {}, {m_scroll}));

    refreshWhileShown(this, &m_store, &DashboardStore::changed, [this] { refresh(); });
    refresh();
}

void HardwareMonitorView::applyLayout(const DashboardLayoutMetrics &layout)
{
    const int padding = static_cast<int>(layout.pageHorizontalPadding);
    m_contentLayout->setContentsMargins(padding, 20, padding, 24);
    m_chartBlock->setFixedHeight(static_cast<int>(layout.hardwareChartHeight));
    setPageScrolling(m_scroll, layout.isShort, 730);
}

void HardwareMonitorView::setCategory(HardwareCategory category)
{
    if (category == m_category)
        return;
    m_category = category;
    m_tabs->setCategory(category);
    // The series is taken afresh from the history: nothing is lost by switching.
    refreshWorkspace();
}

void HardwareMonitorView::refresh()
{
    refreshWorkspace();
    m_table->setStatuses(m_store.sensorStatuses());
}

void HardwareMonitorView::refreshWorkspace()
{
    const std::vector<HardwareTrendPoint> points =
        m_store.hardwareTrendPoints(kHardwareTrendWindowSeconds);
    const std::optional<SystemMetricSample> &latest = m_store.latestSystemSample();
    const std::vector<QPointF> series = hardwareSeries(m_category, points);
    const std::optional<QString> unavailable = hardwareUnavailableReason(m_category, latest);
    m_summary->setSummary({m_category, hardwareCurrentText(m_category, latest),
                           hardwareStatusLine(m_category, latest),
                           hardwareSeriesFigures(m_category, series, unavailable.has_value())});
    const HardwareCategoryInfo info = hardwareCategoryInfo(m_category);
    m_chartTitle->setText(info.chartTitle);
    m_chartTitle->setAccessibleName(info.chartTitle);
    m_chart->setAccessibleName(info.chartTitle);
    m_chart->setContent(hardwareChartContent(m_category, points, unavailable));
}
