#pragma once

#include "dashboard/DashboardStore.h"

#include <QString>

// The report as readable text: the readings of the store's latest sample, one
// row each, then one section per part of the dashboard's state. `sampleCount`
// is how many samples the store was fed.
QString reportText(const DashboardStore &store, long long sampleCount);
