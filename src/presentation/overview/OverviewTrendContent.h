#pragma once

#include "dashboard/DashboardTrends.h"
#include "presentation/kit/TrendChart.h"

#include <vector>

// The temperature area rises from this value, not from the plot's floor: a
// chip at rest sits around 30 °C, so an area from 0 would be a solid block
// under the CPU area; from 30 it shows the heat above rest. It is the floor of
// the hardware page's temperature scale as well.
inline constexpr double kOverviewTemperatureBaseCelsius = 30.0;

// Where the x axis is labelled: every ten minutes of the thirty.
inline constexpr double kOverviewTrendLabelStepSeconds = 600.0;

// The thirty-minute chart: x over 0..1800 s, y over 0..100 shared by CPU
// percent and degrees Celsius; the CPU series (warning, area from 0) and the
// temperature series (accent, area from the base above), each with its last
// point marked when the newest point has its value; the empty overlay when
// neither series has a point.
TrendChartContent overviewTrendContent(const std::vector<HeatTrendPoint> &points);
