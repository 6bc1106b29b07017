#pragma once

#include "presentation/shell/DashboardSection.h"
#include "sampling/TimePoint.h"

#include <QString>

class DashboardStore;

// The header's second line for a section, from the store's current values.
QString dashboardStatusLine(DashboardSection section, const DashboardStore &store);
// "最新采样" time: numeric date and standard time in the user's locale, or
// "等待首次采样" before the first sample.
QString latestSampleText(const DashboardStore &store);
// The locale's numeric date and its time of day with seconds (no time zone).
QString numericDateTimeText(TimePoint time);
