#pragma once

// Made-up probes for driving the sampler, the monitor and the store without
// the machine. Each records its calls so tests can check order and arguments.

#include "sampling/Probing.h"
#include "sampling/SystemMetricSampler.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

// Shared log of probe calls, in order, with the time argument where there is one.
struct ProbeCallLog {
    struct Call {
        std::string probe;
        std::optional<TimePoint> time;
    };
    std::mutex mutex;
    std::vector<Call> calls;
    std::function<void()> onEveryCall; // e.g. a sleep to make a tick slow

    void record(std::string probe, std::optional<TimePoint> time = std::nullopt);
    std::vector<Call> snapshot();
    std::size_t count(const std::string &probe);
};

// Builds a sampler whose probes all log to `log`. The rate probes (CPU, disk,
// network) return `warmingUp` on their first call only, then a figure (25 %,
// 2 MB/s, 1 KB/s in and 2 KB/s out); processes are `processes`.
std::shared_ptr<SystemMetricSampler> makeFakeSampler(std::shared_ptr<ProbeCallLog> log,
                                                     QList<ProcessMetric> processes = {});
