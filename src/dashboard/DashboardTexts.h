#pragma once

#include "dashboard/DashboardModel.h"

#include <QString>

// The texts that go with the store's records: the question asked before a
// signal is sent, and the diagnosis shown while no task is selected.

// "结束 <name>（PID <pid>）？", or "强制结束 …" for the forced signal.
QString terminationConfirmationTitle(const DashboardPendingTermination &pending);
// The button that sends the signal.
QString terminationConfirmationActionTitle(const DashboardPendingTermination &pending);
// What ending costs: the task's own wording for its target, the count of
// direct children for a parent, a general warning otherwise.
QString terminationConfirmationMessage(const DashboardPendingTermination &pending);

TaskDiagnosis placeholderDiagnosis(bool liveTasksEmpty);
