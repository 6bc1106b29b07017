#pragma once

#include "sampling/ProcessMetric.h"
#include "sampling/SensorReading.h"
#include "sampling/SystemThermalState.h"
#include "sampling/TimePoint.h"

#include <cstdint>
#include <QList>

#include <vector>

// Used and total bytes of physical memory. Invariant: used <= total.
struct SystemMemoryUsage {
    std::uint64_t usedBytes = 0;
    std::uint64_t totalBytes = 0;

    bool operator==(const SystemMemoryUsage &) const = default;
};

// Received and sent bytes per second over all counted interfaces; both >= 0.
struct NetworkThroughput {
    double receivedBytesPerSecond = 0.0;
    double sentBytesPerSecond = 0.0;

    bool operator==(const NetworkThroughput &) const = default;
};

// One tick of the whole machine. Copied by value wherever it goes, so that no
// reader ever sees a sample change.
struct SystemMetricSample {
    TimePoint timestamp; // read before the probes run; every rate probe of the tick uses it
    SensorReading<double> cpuUsage;           // percent of all CPU ticks, 0..100
    SystemThermalState thermalState = SystemThermalState::unknown;
    SensorReading<double> temperatureCelsius; // one folded figure for the chip
    SensorReading<double> fanRPM;             // one folded figure for all fans
    SensorReading<double> gpuUsage;           // percent, 0..100
    SensorReading<double> diskBytesPerSecond; // read plus written
    SensorReading<SystemMemoryUsage> memoryUsage;
    SensorReading<NetworkThroughput> networkThroughput;
    // An empty list means nothing was read. A QList because it is implicitly
    // shared: the history, the recovery baseline and chart queries copy
    // samples freely, and an hour of 600-process samples must not be copied
    // element by element on each of those.
    QList<ProcessMetric> processMetrics;

    bool operator==(const SystemMetricSample &) const = default;
};
