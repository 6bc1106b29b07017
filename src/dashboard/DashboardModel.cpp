#include "dashboard/DashboardModel.h"

DashboardRecoveryMetrics DashboardRecoveryMetrics::fromSample(const SystemMetricSample &sample)
{
    return DashboardRecoveryMetrics{sample.cpuUsage.value(), sample.temperatureCelsius.value(),
                                    sample.fanRPM.value(), sample.thermalState};
}
