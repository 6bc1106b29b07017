// The store's read-only views on trends and sensors; the derivations live in
// DashboardTrends.

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
