#pragma once

#include "dashboard/DashboardTrends.h"
#include "presentation/kit/TrendChart.h"

#include <vector>

// The evidence's chart covers the last five minutes.
inline constexpr double kDiagnosisTrendWindowSeconds = 300.0;

// The evidence's chart: x over 0..300 s with a label and a grid line every
// minute, y over 0..100 shared by CPU percent and degrees Celsius with labels
// at 0, 50 and 100; the CPU (danger, with its area from 0) and the temperature
// (warning, a line only), each marked at the newest point when it has a value
// (heatTrendContent); the overlay while neither series has a point.
TrendChartContent diagnosisTrendContent(const std::vector<HeatTrendPoint> &points);
