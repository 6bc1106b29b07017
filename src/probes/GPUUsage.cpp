#include "probes/GPUUsage.h"

#include <cmath>

double clampGPUPercent(double percent)
{
    if (std::isnan(percent) || percent < 0.0)
        return 0.0;
    return percent > 100.0 ? 100.0 : percent;
}

SensorReading<double> gpuUsageReading(const std::vector<GPUBusyValue> &devices,
                                      const QString &noDeviceText)
{
    const GPUBusyValue *largest = nullptr;
    double largestPercent = 0.0;
    for (const GPUBusyValue &device : devices) {
        const double percent = clampGPUPercent(device.percent);
        if (!largest || percent > largestPercent) {
            largest = &device;
            largestPercent = percent;
        }
    }
    if (!largest)
        return SensorReading<double>::unsupported(noDeviceText);
    return SensorReading<double>::available(largestPercent, largest->source);
}
