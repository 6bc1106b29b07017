#pragma once

#include "sampling/SensorReading.h"

#include <QString>

#include <vector>

// One device's busy percent as its route published it.
struct GPUBusyValue {
    double percent = 0.0;
    QString source; // the route that gave it

    bool operator==(const GPUBusyValue &) const = default;
};

// Limits to 0..100; below 0 and not-a-number become 0.
double clampGPUPercent(double percent);

// The largest clamped value of all devices, with the source of the device
// that gave it (the earliest on a tie, so the order of the routes decides);
// unsupported with `noDeviceText` when no device gave a value. No warm-up:
// the figure is published as a percentage.
SensorReading<double> gpuUsageReading(const std::vector<GPUBusyValue> &devices,
                                      const QString &noDeviceText);
