#pragma once

#include "dashboard/DashboardTrends.h"
#include "presentation/hardware/HardwareCategory.h"
#include "presentation/kit/TrendChart.h"

#include <optional>
#include <vector>

// The 60-second chart of one category: x over 0..60 labelled "-60s", "-30s",
// "现在"; y over the category's scale with grid lines and labels; the series
// in the category's tone with its area from the scale's floor, and the
// current-point mark when the newest point has a value; while the series is
// empty, the collecting message, or `unavailableReason` once there is one.
TrendChartContent hardwareChartContent(HardwareCategory category,
                                       const std::vector<HardwareTrendPoint> &points,
                                       const std::optional<QString> &unavailableReason = {});
