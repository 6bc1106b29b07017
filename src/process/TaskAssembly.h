#pragma once

#include "dashboard/DashboardModel.h"
#include "process/ApplicationLoad.h"
#include "process/ProcessNameOrder.h"
#include "process/TaskClassification.h"

#include <sys/types.h>

#include <vector>

// Turns a classified load source into what the views show: sums over the
// members, display texts, and the process tree. Pure.
//
// The name order is passed in so that one tick builds one collator for all
// of its tasks rather than one per tree.
DashboardTask assembleTask(const ApplicationLoad &load, const TaskClassification &classification,
                           const ProcessNameOrder &order);

// The members of one load as a forest: a member whose parent is not in the
// load is a root; siblings and roots stand in name order (pid for equal
// names). Members caught in a cycle of parent numbers, which are nobody's
// root and nobody's reachable child, follow as further roots, so every member
// appears exactly once.
std::vector<DashboardProcessNode> assembleProcessTree(const std::vector<ProcessMetric> &processes,
                                                      pid_t targetPID,
                                                      const ProcessNameOrder &order);
