#pragma once

#include "dashboard/DashboardModel.h"
#include "termination/RecoveryEvaluator.h"

#include <optional>

// What the exit of an ended process starts: a verification of 120 s against
// the last sample before the signal, with the context the page shows. With no
// sample before the signal there is nothing to compare: the verdict is
// `insufficientData` at once, and neither context nor evaluator is made.
struct RecoveryStart {
    static constexpr double observationWindowSeconds = 120.0;

    DashboardRecoveryState state = DashboardRecoveryState::insufficientData;
    std::optional<DashboardRecoveryContext> context;
    std::optional<RecoveryEvaluator> evaluator;

    bool operator==(const RecoveryStart &) const = default;

    static RecoveryStart afterExit(const DashboardPendingTermination &ended,
                                   const std::optional<SystemMetricSample> &baseline);
};
