#include "termination/RecoveryEvaluator.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

// Both ends available, or nothing: any other reading removes the metric.
std::optional<std::pair<double, double>> pairOf(const SensorReading<double> &baseline,
                                                const SensorReading<double> &latest)
{
    if (!baseline.isAvailable() || !latest.isAvailable())
        return std::nullopt;
    return std::pair(*baseline.value(), *latest.value());
}

} // namespace

DashboardRecoveryState RecoveryEvaluator::evaluate(const SystemMetricSample &latest) const
{
    if (latest.timestamp.secondsSince(startedAt) < observationWindow)
        return DashboardRecoveryState::recovering;

    bool anyPair = false;
    bool improved = false;

    if (const auto cpu = pairOf(baseline.cpuUsage, latest.cpuUsage)) {
        anyPair = true;
        const auto [before, after] = *cpu;
        const double leastDrop = std::max(leastCPUDropPoints, leastCPUDropFraction * before);
        improved = improved || before - after >= leastDrop;
    }
    if (const auto temperature = pairOf(baseline.temperatureCelsius, latest.temperatureCelsius)) {
        anyPair = true;
        const auto [before, after] = *temperature;
        improved = improved || before - after >= leastTemperatureDropCelsius;
    }
    if (const auto fan = pairOf(baseline.fanRPM, latest.fanRPM)) {
        anyPair = true;
        const auto [before, after] = *fan;
        // A stopped fan cannot fall; without the first test 0 -> 0 would count.
        improved = improved || (before > 0.0 && before - after >= leastFanDropFraction * before);
    }

    if (!anyPair)
        return DashboardRecoveryState::insufficientData;
    return improved ? DashboardRecoveryState::recovered : DashboardRecoveryState::noImprovement;
}
