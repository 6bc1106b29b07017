#pragma once

#include "sampling/Probing.h"

#include <memory>
#include <mutex>

// Runs every probe once per tick, in a fixed order, and returns one sample.
//
// The sampler is a serialised context: `sample` may be called from any thread,
// and two calls never overlap. That matters when monitoring is stopped and
// restarted while a tick is still running: the new producer's first tick
// waits for the old one, so the stateful probes never see two ticks at once.
class SystemMetricSampler {
public:
    struct Probes {
        std::unique_ptr<CPUUsageProbing> cpuProbe;
        std::unique_ptr<ThermalStateProbing> thermalProbe;
        std::unique_ptr<AppleSensorProbing> sensorProbe;
        std::unique_ptr<GPUUsageProbing> gpuProbe;
        std::unique_ptr<DiskIOProbing> diskProbe;
        std::unique_ptr<MemoryUsageProbing> memoryProbe;
        std::unique_ptr<NetworkIOProbing> networkProbe;
        std::unique_ptr<ProcessMetricsProbing> processProbe;
    };

    // Every probe must be present.
    explicit SystemMetricSampler(Probes probes);

    SystemMetricSampler(const SystemMetricSampler &) = delete;
    SystemMetricSampler &operator=(const SystemMetricSampler &) = delete;

    // One tick with the tick's point in time. Cannot fail.
    SystemMetricSample sample(TimePoint now);

private:
    std::mutex m_serial;
    Probes m_probes;
};
