#pragma once

#include "sampling/SystemMetricSample.h"

#include <vector>

// The eight probe interfaces, one operation each. Contract for all of them:
// - called only by SystemMetricSampler, one tick at a time, from whatever
//   thread runs the tick; a probe needs no lock of its own;
// - never throws: every failure is a SensorReading case with its reason text,
//   and a process that cannot be read is left out of the list;
// - probes that take the tick's point in time compute rates against the value
//   of their previous call and never read a clock of their own for this.

class CPUUsageProbing {
public:
    virtual ~CPUUsageProbing() = default;
    // Percent of all CPU ticks that were busy since the previous call.
    virtual SensorReading<double> sample() = 0;
};

class ThermalStateProbing {
public:
    virtual ~ThermalStateProbing() = default;
    virtual SystemThermalState read() = 0;
};

struct AppleSensorReadings {
    SensorReading<double> temperature;
    SensorReading<double> fan;

    bool operator==(const AppleSensorReadings &) const = default;
};

// Chip temperature and fan speed, read together (temperature first).
class AppleSensorProbing {
public:
    virtual ~AppleSensorProbing() = default;
    virtual AppleSensorReadings read() = 0;
};

class GPUUsageProbing {
public:
    virtual ~GPUUsageProbing() = default;
    virtual SensorReading<double> sample() = 0;
};

class DiskIOProbing {
public:
    virtual ~DiskIOProbing() = default;
    // Read plus written bytes per second since the previous call.
    virtual SensorReading<double> sample(TimePoint now) = 0;
};

class MemoryUsageProbing {
public:
    virtual ~MemoryUsageProbing() = default;
    virtual SensorReading<SystemMemoryUsage> sample() = 0;
};

class NetworkIOProbing {
public:
    virtual ~NetworkIOProbing() = default;
    virtual SensorReading<NetworkThroughput> sample(TimePoint now) = 0;
};

class ProcessMetricsProbing {
public:
    virtual ~ProcessMetricsProbing() = default;
    // The current user's processes with rates since the previous call.
    virtual QList<ProcessMetric> sample(TimePoint now) = 0;
};
