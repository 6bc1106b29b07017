#include "presentation/diagnosis/DiagnosisTrendContent.h"

#include "presentation/diagnosis/DiagnosisTexts.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/TrendChartData.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DiagnosisTrendContent)
};

} // namespace

TrendChartContent diagnosisTrendContent(const std::vector<HeatTrendPoint> &points)
{
    namespace P = DashboardPalette;
    TrendChartContent look;
    look.x.upperBound = kDiagnosisTrendWindowSeconds;
    for (double x = 0; x <= kDiagnosisTrendWindowSeconds; x += 60)
        look.x.labels.push_back({x, heatTrendAxisLabel(x)});
    look.x.showsGridLines = true;
    look.x.gridColor = QColor::fromRgb(P::divider);
    for (const double y : {0.0, 50.0, 100.0})
        look.y.labels.push_back({y, QString::number(static_cast<int>(y))});
    look.y.showsGridLines = true;
    look.y.gridColor = P::color(P::divider, 0.8);

    look.series = {{.name = Words::tr("CPU"),
                    .color = QColor::fromRgb(P::danger),
                    .lineWidth = 2.5,
                    .area = TrendChartArea{0.0, 0.16, 0.01},
                    .lastPointMarkArea = 36},
                   {.name = Words::tr("温度"),
                    .color = QColor::fromRgb(P::warning),
                    .lineWidth = 2.0,
                    .lastPointMarkArea = 30}};

    look.style.labelColor = QColor::fromRgb(P::textTertiary);
    look.style.labelFontSize = 9;
    look.style.plotBackground = QColor::fromRgb(P::panelBackground);
    look.style.plotCornerRadius = 8;
    look.style.emptyText = Words::tr("正在积累相关性趋势…");
    look.style.emptyColor = QColor::fromRgb(P::textTertiary);
    return heatTrendContent(std::move(look), points);
}
