#pragma once

#include "sampling/SystemMetricSample.h"
#include "sampling/TimePoint.h"
#include "termination/DashboardRecoveryState.h"

// The verdict on whether ending a process helped: holds the sample taken
// before the signal and, once the observation window has passed, compares it
// with the latest sample. Immutable; the same sample always gives the same
// verdict, and never `idle` or `terminationFailed`.
struct RecoveryEvaluator {
    // A CPU drop must reach the larger of 10 points and a fifth of the
    // baseline: 10 points up to a 50 % baseline, a fifth above it.
    static constexpr double leastCPUDropPoints = 10.0;
    static constexpr double leastCPUDropFraction = 0.2;
    static constexpr double leastTemperatureDropCelsius = 2.0;
    static constexpr double leastFanDropFraction = 0.1;

    SystemMetricSample baseline;
    TimePoint startedAt;
    double observationWindow = 120.0; // seconds

    bool operator==(const RecoveryEvaluator &) const = default;

    // `recovering` until `observationWindow` has passed (a sample exactly at
    // its end is judged). Then `recovered` if any of CPU, temperature or fan
    // fell far enough, `noImprovement` if none did, and `insufficientData`
    // when none of the three was available at both ends.
    DashboardRecoveryState evaluate(const SystemMetricSample &latest) const;
};
