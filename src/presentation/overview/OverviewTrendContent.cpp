#include "presentation/overview/OverviewTrendContent.h"

#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/TrendChartData.h"
#include "presentation/overview/OverviewTexts.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(OverviewTrendContent)
};

} // namespace

TrendChartContent overviewTrendContent(const std::vector<HeatTrendPoint> &points)
{
    namespace P = DashboardPalette;
    TrendChartContent content;
    content.x.lowerBound = 0.0;
    content.x.upperBound = kOverviewTrendWindowSeconds;
    for (double x = 0.0; x <= kOverviewTrendWindowSeconds; x += kOverviewTrendLabelStepSeconds)
        content.x.labels.push_back({x, overviewTrendAxisLabel(x)});
    content.x.showsGridLines = true;
    content.x.gridColor = QColor::fromRgb(P::divider);

    content.y.lowerBound = 0.0;
    content.y.upperBound = 100.0;
    content.y.showsLabels = false;

    // Both areas stand on the floor of the shared scale: a base inside the plot
    // (a "rest" temperature) draws a hard edge across the whole chart.
    content.series = {{.name = QStringLiteral("CPU"),
                       .color = QColor::fromRgb(P::warning),
                       .area = TrendChartArea{0.0, 0.18, 0.01},
                       .lastPointMarkArea = 28.0},
                      {.name = Words::tr("温度"),
                       .color = QColor::fromRgb(P::accent),
                       .area = TrendChartArea{content.y.lowerBound, 0.1, 0.01},
                       .lastPointMarkArea = 28.0}};

    content.style.labelColor = QColor::fromRgb(P::textTertiary);
    content.style.plotBackground = QColor::fromRgb(P::panelBackground);
    content.style.plotCornerRadius = 16.0;
    content.style.emptyText = Words::tr("正在采集系统趋势…");
    content.style.emptyFontSize = 12.0;
    content.style.emptyColor = QColor::fromRgb(P::textTertiary);
    content.style.tension = 0.5;
    return heatTrendContent(std::move(content), points);
}
