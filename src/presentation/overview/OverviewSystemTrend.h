#pragma once

#include "dashboard/DashboardTrends.h"

#include <QWidget>

#include <vector>

class TrendChart;

// "系统趋势" with its legend, over the thirty-minute chart of CPU and
// temperature (identifier "overviewTrendChart").
class OverviewSystemTrend final : public QWidget {
    Q_OBJECT

public:
    explicit OverviewSystemTrend(QWidget *parent = nullptr);

    void setPoints(const std::vector<HeatTrendPoint> &points);
    TrendChart *chart() const { return m_chart; }

private:
    TrendChart *m_chart;
};
