#pragma once

// The store's own records: the termination in progress and what followed it.
// The task records come from process/, the signal and the recovery verdict
// from termination/. All records are plain values with equality over all
// fields in declaration order.

#include "process/DashboardTask.h"
#include "sampling/SystemMetricSample.h"
#include "sampling/TimePoint.h"
#include "termination/DashboardRecoveryState.h"
#include "termination/ProcessTerminationSignal.h"

#include <QString>

#include <optional>
#include <sys/types.h>

enum class DashboardTerminationPhase { verifying, exited, unresponsive, failed };

// The process the user chose to end, waiting for the confirmation
// (DashboardTexts.h words the question).
struct DashboardPendingTermination {
    DashboardTask task;
    DashboardProcessNode process;
    ProcessTerminationSignal mode = ProcessTerminationSignal::graceful;

    bool operator==(const DashboardPendingTermination &) const = default;
};

struct DashboardTerminationStatus {
    QString processNodeID;
    QString processName;
    pid_t pid = 0;
    ProcessTerminationSignal mode = ProcessTerminationSignal::graceful;
    DashboardTerminationPhase phase = DashboardTerminationPhase::verifying;

    bool operator==(const DashboardTerminationStatus &) const = default;
};

struct DashboardRecoveryMetrics {
    std::optional<double> cpu;
    std::optional<double> temperature;
    std::optional<double> fanRPM;
    SystemThermalState thermalState = SystemThermalState::unknown;

    bool operator==(const DashboardRecoveryMetrics &) const = default;

    static DashboardRecoveryMetrics fromSample(const SystemMetricSample &sample);
};

struct DashboardRecoveryContext {
    QString taskID;
    QString processNodeID;
    QString processName;
    pid_t pid = 0;
    TimePoint startedAt;
    double observationWindow = 120.0;
    DashboardRecoveryMetrics baseline;

    bool operator==(const DashboardRecoveryContext &) const = default;
};
