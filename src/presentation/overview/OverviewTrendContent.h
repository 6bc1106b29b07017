#pragma once

#include "dashboard/DashboardTrends.h"
#include "presentation/kit/TrendChart.h"

#include <vector>

// Where the x axis is labelled: every ten minutes of the thirty.
inline constexpr double kOverviewTrendLabelStepSeconds = 600.0;

// The thirty-minute chart: x over 0..1800 s, y over 0..100 shared by CPU
// percent and degrees Celsius; the CPU series (warning) and the temperature
// series (accent), both with areas from the floor of the scale so that no
// band edge crosses the plot, each with its last point marked when the newest
// point has its value; the empty overlay when neither series has a point.
TrendChartContent overviewTrendContent(const std::vector<HeatTrendPoint> &points);
