#include "presentation/hardware/HardwareChartContent.h"

#include "presentation/hardware/HardwareTexts.h"
#include "presentation/kit/DashboardPalette.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(HardwareChartContent)
};

} // namespace

TrendChartContent hardwareChartContent(HardwareCategory category,
                                       const std::vector<HardwareTrendPoint> &points,
                                       const std::optional<QString> &unavailableReason)
{
    namespace P = DashboardPalette;
    const HardwareCategoryInfo info = hardwareCategoryInfo(category);
    TrendChartSeries series;
    series.name = info.title;
    series.points = hardwareSeries(category, points);
    series.color = QColor::fromRgb(info.tone);
    series.lineWidth = 2.5;
    const HardwareScale scale = hardwareScale(category, series.points);
    series.area = TrendChartArea{scale.lowerBound, 0.18, 0.01};
    if (hardwareNewestPointHasValue(category, points))
        series.lastPointMarkArea = 38.0;

    TrendChartContent content;
    content.x.lowerBound = 0.0;
    content.x.upperBound = kHardwareTrendWindowSeconds;
    for (const double x : {0.0, 30.0, 60.0})
        content.x.labels.push_back({x, hardwareTimeAxisLabel(x)});
    content.x.showsGridLines = true;
    content.x.gridColor = QColor::fromRgb(P::divider);

    content.y.lowerBound = scale.lowerBound;
    content.y.upperBound = scale.upperBound;
    for (const double y : hardwareScaleTicks(scale))
        content.y.labels.push_back({y, hardwareAxisValueText(category, y)});
    content.y.showsGridLines = true;
    content.y.gridColor = QColor::fromRgb(P::divider);

    content.series.push_back(std::move(series));

    content.style.labelColor = QColor::fromRgb(P::textTertiary);
    content.style.plotBackground = QColor::fromRgb(P::panelBackground);
    content.style.plotCornerRadius = 12.0;
    content.style.emptyText =
        unavailableReason ? *unavailableReason : Words::tr("正在采集%1趋势…").arg(info.title);
    content.style.emptySymbol = QStringLiteral("waveform.path.ecg");
    content.style.emptyFontSize = 12.0;
    content.style.emptyColor = QColor::fromRgb(P::textTertiary);
    content.style.tension = 0.5;
    return content;
}
