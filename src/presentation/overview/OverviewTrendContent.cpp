#include "presentation/overview/OverviewTrendContent.h"

#include "presentation/kit/DashboardPalette.h"
#include "presentation/overview/OverviewTexts.h"
#include "sampling/Text.h"

#include <cmath>

namespace {

constexpr double kMarkArea = 28.0;
constexpr double kLineWidth = 2.4;

template <typename Field>
TrendChartSeries series(const std::vector<HeatTrendPoint> &points, Field field, QString name,
                        QRgb tone, TrendChartArea area)
{
    TrendChartSeries result;
    result.name = std::move(name);
    result.color = QColor::fromRgb(tone);
    result.lineWidth = kLineWidth;
    result.area = area;
    result.points.reserve(points.size());
    for (const HeatTrendPoint &point : points) {
        const std::optional<double> &value = point.*field;
        if (value && std::isfinite(*value) && std::isfinite(point.elapsedSeconds))
            result.points.emplace_back(point.elapsedSeconds, *value);
    }
    if (!points.empty() && (points.back().*field).has_value() && !result.points.empty() &&
        result.points.back().x() == points.back().elapsedSeconds)
        result.lastPointMarkArea = kMarkArea;
    return result;
}

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

    content.series.push_back(series(points, &HeatTrendPoint::cpu, QStringLiteral("CPU"), P::warning,
                                    TrendChartArea{0.0, 0.18, 0.01}));
    // Both areas stand on the floor of the shared scale: a base inside the plot
    // (a "rest" temperature) draws a hard edge across the whole chart.
    content.series.push_back(series(points, &HeatTrendPoint::temperature, kwText("温度"), P::accent,
                                    TrendChartArea{content.y.lowerBound, 0.1, 0.01}));

    content.style.labelColor = QColor::fromRgb(P::textTertiary);
    content.style.plotBackground = QColor::fromRgb(P::panelBackground);
    content.style.plotCornerRadius = 16.0;
    content.style.emptyText = kwText("正在采集系统趋势…");
    content.style.emptyFontSize = 12.0;
    content.style.emptyColor = QColor::fromRgb(P::textTertiary);
    content.style.tension = 0.5;
    return content;
}
