#pragma once

#include "dashboard/DashboardStore.h"

#include <QString>

#include <vector>

// The report as readable text: the last sample's readings, one row each, then
// one section per part of the dashboard's state.
QString reportText(const DashboardStore &store, const std::vector<SystemMetricSample> &samples);
