#pragma once

#include "dashboard/DashboardModel.h"

#include <QString>

#include <optional>
#include <set>
#include <sys/types.h>
#include <vector>

// The process tree's logic, free of any widget: which nodes are open, and the
// rows that the open nodes give.

// One row of the flattened tree. `node` points into the task it came from and
// is valid while that task is.
struct VisibleProcessRow {
    const DashboardProcessNode *node = nullptr;
    int depth = 0; // 0 for a root

    bool operator==(const VisibleProcessRow &) const = default;
};

// Depth first, pre-order: every root at depth 0; a node's children follow it,
// one level deeper, when its pid is in `expandedPIDs` and only then. There is
// no depth limit (an explicit stack, so a very deep tree costs no recursion).
std::vector<VisibleProcessRow> flattenProcessTree(const std::vector<DashboardProcessNode> &roots,
                                                  const std::set<pid_t> &expandedPIDs);

// The open nodes, keyed by pid. The set belongs to one task: when the shown
// task's id changes (no task counting as an id of its own) it is replaced by
// the task's initially expanded pids, so exactly the target's ancestors are
// open; ticks of the same task leave it alone.
class ProcessExpansion {
public:
    // Call with the task about to be shown, on every tick.
    void follow(const DashboardTask *task);
    void toggle(pid_t pid);
    bool isExpanded(pid_t pid) const { return m_expanded.count(pid) > 0; }
    const std::set<pid_t> &expandedPIDs() const { return m_expanded; }

private:
    // Absent before the first call; then the shown task's id, or an absent id.
    std::optional<std::optional<QString>> m_taskID;
    std::set<pid_t> m_expanded;
};
