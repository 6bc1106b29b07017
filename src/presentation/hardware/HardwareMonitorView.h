#pragma once

#include "presentation/hardware/HardwareCategory.h"
#include "presentation/shell/DashboardPage.h"

class DashboardStore;
class HardwareCategoryTabs;
class HardwareSensorTable;
class HardwareSummaryRow;
class QScrollArea;
class QVBoxLayout;
class TextLabel;
class TrendChart;

// The hardware page: one category at a time in the workspace (tabs, summary,
// 60-second chart) and the sensor table under it. The selected category is
// the page's own and starts at temperature each time the page is opened.
class HardwareMonitorView final : public DashboardPage {
    Q_OBJECT

public:
    explicit HardwareMonitorView(DashboardStore &store, QWidget *parent = nullptr);

    void applyLayout(const DashboardLayoutMetrics &layout) override;
    // Reads the store afresh; runs on every change the store announces.
    void refresh();

    HardwareCategory category() const { return m_category; }
    void setCategory(HardwareCategory category);

    HardwareCategoryTabs *tabs() const { return m_tabs; }
    HardwareSummaryRow *summaryRow() const { return m_summary; }
    TrendChart *chart() const { return m_chart; }
    HardwareSensorTable *sensorTable() const { return m_table; }
    QScrollArea *scrollArea() const { return m_scroll; }

private:
    void refreshWorkspace();

    DashboardStore &m_store;
    HardwareCategory m_category = HardwareCategory::temperature;
    QScrollArea *m_scroll;
    QVBoxLayout *m_contentLayout;
    HardwareCategoryTabs *m_tabs;
    HardwareSummaryRow *m_summary;
    QWidget *m_chartBlock;
    TextLabel *m_chartTitle;
    TrendChart *m_chart;
    HardwareSensorTable *m_table;
};
