#include "presentation/kit/TrendChartData.h"

TrendChartContent heatTrendContent(TrendChartContent look,
                                   const std::vector<HeatTrendPoint> &points)
{
    if (look.series.size() >= 2) {
        fillTrendSeries(look.series[0], points, [](const HeatTrendPoint &p) { return p.cpu; });
        fillTrendSeries(look.series[1], points,
                        [](const HeatTrendPoint &p) { return p.temperature; });
    }
    return look;
}
