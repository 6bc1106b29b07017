#pragma once

#include "dashboard/DashboardModel.h"
#include "sampling/SystemMetricSample.h"

#include <QString>

#include <optional>

// The texts of the process operation panel, from the store's values: the end
// button's title, what ending means, and the verification box. Pure. The
// status passed in is always the selection's (`selectedTerminationStatus`),
// so that another process's attempt never speaks for this one.

using OptionalTerminationStatus = std::optional<DashboardTerminationStatus>;

// `process` is null without a selected task or process.
QString endButtonTitle(const DashboardProcessNode *process,
                       const OptionalTerminationStatus &selectedStatus);
// "%1 %2，PID %3": the title, the process and its pid.
QString endButtonAccessibleLabel(const QString &title, const DashboardProcessNode *process);

// What ending the selection would do, or why it cannot be ended.
QString terminationImpactText(const DashboardTask *task, const DashboardProcessNode *process,
                              bool canTerminate, const OptionalTerminationStatus &selectedStatus);

// The recovery context in effect: a status of the selection that has not
// reached `exited` outranks it, and then there is none.
const DashboardRecoveryContext *
effectiveRecoveryContext(const OptionalTerminationStatus &selectedStatus,
                         const std::optional<DashboardRecoveryContext> &context);

// The line beside "本次操作验证"; empty for none.
QString verificationTargetLine(const OptionalTerminationStatus &selectedStatus,
                               const DashboardRecoveryContext *effectiveContext);

// The termination phase first, then the recovery state.
QString verificationStatusText(const OptionalTerminationStatus &selectedStatus,
                               DashboardRecoveryState recoveryState,
                               const DashboardRecoveryContext *effectiveContext,
                               const std::optional<SystemMetricSample> &latest);

// What is left of the observation window, measured to the latest sample (to
// the window's start without one), so the countdown moves with samples and
// not with the wall clock: "1 分 5 秒", "42 秒", "0 秒".
QString remainingObservationText(const DashboardRecoveryContext &context,
                                 const std::optional<SystemMetricSample> &latest);

// A value of the baseline → current rows; "不可用" when absent.
QString recoveryCPUText(const std::optional<double> &cpu);
QString recoveryTemperatureText(const std::optional<double> &celsius);
