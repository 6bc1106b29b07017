#include "dashboard/RecoveryStart.h"

RecoveryStart RecoveryStart::afterExit(const DashboardPendingTermination &ended,
                                       const std::optional<SystemMetricSample> &baseline)
{
    if (!baseline)
        return RecoveryStart{DashboardRecoveryState::insufficientData, std::nullopt, std::nullopt};
    // The window counts from the last sample before the signal, up to one
    // tick before it, not from the exit.
    const TimePoint startedAt = baseline->timestamp;
    return RecoveryStart{
        DashboardRecoveryState::recovering,
        DashboardRecoveryContext{ended.task.id, ended.process.id, ended.process.name,
                                 ended.process.pid, startedAt, observationWindowSeconds,
                                 DashboardRecoveryMetrics::fromSample(*baseline)},
        RecoveryEvaluator{*baseline, startedAt, observationWindowSeconds},
    };
}
