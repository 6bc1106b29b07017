#pragma once

#include "dashboard/DashboardTrends.h"
#include "presentation/kit/TrendChart.h"

#include <cmath>
#include <optional>
#include <vector>

// The data side of every trend chart: a page describes how its chart looks
// (a TrendChartContent without points, each series with the mark it wants)
// and these fill the series from the store's trend points, by the same rule
// everywhere.

// Gives `series` the points of `points` whose `valueOf(point)` is there and
// finite, x being the point's elapsedSeconds. A gap is a missing point, never
// a zero. The series keeps its last-point mark only when the newest point of
// the window has its value: a series whose newest reading failed ends without
// a mark rather than marking an older point as if it were now.
template <typename Point, typename ValueOf>
void fillTrendSeries(TrendChartSeries &series, const std::vector<Point> &points, ValueOf valueOf)
{
    const auto finite = [&](const Point &point) {
        const std::optional<double> value = valueOf(point);
        return value && std::isfinite(*value) && std::isfinite(point.elapsedSeconds);
    };
    series.points.clear();
    series.points.reserve(points.size());
    for (const Point &point : points) {
        if (finite(point))
            series.points.emplace_back(point.elapsedSeconds, *valueOf(point));
    }
    if (points.empty() || !finite(points.back()))
        series.lastPointMarkArea.reset();
}

// The system's CPU and temperature over the window: `look` with its first
// series filled from `cpu` and its second from `temperature`.
TrendChartContent heatTrendContent(TrendChartContent look,
                                   const std::vector<HeatTrendPoint> &points);
