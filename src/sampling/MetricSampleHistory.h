#pragma once

#include "sampling/SystemMetricSample.h"

#include <deque>
#include <vector>

// The recent samples, in memory only, for the charts. Pruned on every append
// against the new sample's own time (not a clock), so a reach of 3600 s holds
// about 1800 samples at one per 2 seconds.
//
// The charts draw machine-wide readings only, so a kept sample holds every
// reading but not the tick's process list: an hour of 600-process lists would
// cost a couple of hundred megabytes and nothing reads them back. The newest
// tick's processes live in the store's latest sample.
class MetricSampleHistory {
public:
    static constexpr int targetPointsPerQuery = 360;

    explicit MetricSampleHistory(double durationSeconds = 3600.0) : m_duration(durationSeconds) {}

    void append(SystemMetricSample sample);

    // The samples of the last `windowSeconds` before the newest sample (the
    // window is anchored on the newest sample, not on the present), thinned by
    // picking whole samples at a stride so that at most 361 come back.
    std::vector<SystemMetricSample> recentSamples(double windowSeconds) const;

    const std::deque<SystemMetricSample> &samples() const { return m_samples; }
    double duration() const { return m_duration; }

    bool operator==(const MetricSampleHistory &) const = default;

private:
    std::deque<SystemMetricSample> m_samples; // oldest first
    double m_duration;
};
