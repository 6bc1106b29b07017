// What the store computes afresh on each call: chart points, the sensor
// table (derived in DashboardTrends) and what the menu bar shows.

#include "dashboard/DashboardStore.h"

namespace {
// The process reader of this build (/proc on Linux).
const char *const kProcessesSource = "procfs";
} // namespace

std::vector<HeatTrendPoint> DashboardStore::heatTrendPoints(double windowSeconds) const
{
    return ::heatTrendPoints(m_sampleHistory, windowSeconds);
}

std::vector<HardwareTrendPoint> DashboardStore::hardwareTrendPoints(double windowSeconds) const
{
    return ::hardwareTrendPoints(m_sampleHistory, windowSeconds);
}

std::vector<DashboardSensorStatus> DashboardStore::sensorStatuses() const
{
    return ::sensorStatuses(m_latestSystemSample, QString::fromLatin1(kProcessesSource));
}

MenuBarPresentation DashboardStore::menuBarPresentation() const
{
    return makePresentation(m_latestSystemSample ? &*m_latestSystemSample : nullptr, m_allTasks,
                            m_menuBarAbnormalStartedAt);
}
