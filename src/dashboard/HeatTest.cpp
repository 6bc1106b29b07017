#include "dashboard/HeatTest.h"

#include <algorithm>

bool isSampleHot(const SystemMetricSample &sample, std::optional<double> taskCPU)
{
    switch (sample.thermalState) {
    case SystemThermalState::fair:
    case SystemThermalState::serious:
    case SystemThermalState::critical:
        return true;
    case SystemThermalState::nominal:
    case SystemThermalState::unknown:
        break;
    }
    double cpu = sample.cpuUsage.value().value_or(0.0);
    if (taskCPU)
        cpu = std::max(cpu, *taskCPU);
    const std::optional<double> &temperature = sample.temperatureCelsius.value();
    return temperature && *temperature >= kHotTemperatureCelsius && cpu >= kHotCPUPercent;
}
