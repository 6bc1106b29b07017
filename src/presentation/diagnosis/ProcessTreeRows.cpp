#include "presentation/diagnosis/ProcessTreeRows.h"

std::vector<VisibleProcessRow> flattenProcessTree(const std::vector<DashboardProcessNode> &roots,
                                                  const std::set<pid_t> &expandedPIDs)
{
    std::vector<VisibleProcessRow> rows;
    // Pending visits, last out first: children are pushed in reverse so that
    // they come out in order.
    std::vector<VisibleProcessRow> pending;
    for (auto root = roots.rbegin(); root != roots.rend(); ++root)
        pending.push_back({&*root, 0});
    while (!pending.empty()) {
        const VisibleProcessRow row = pending.back();
        pending.pop_back();
        rows.push_back(row);
        const auto &children = row.node->children;
        if (children.empty() || expandedPIDs.count(row.node->pid) == 0)
            continue;
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.push_back({&*child, row.depth + 1});
    }
    return rows;
}

void ProcessExpansion::follow(const DashboardTask *task)
{
    std::optional<QString> id;
    if (task)
        id = task->id;
    if (m_taskID && *m_taskID == id)
        return;
    m_taskID = id;
    m_expanded = task ? task->initiallyExpandedPIDs() : std::set<pid_t>{};
}

void ProcessExpansion::toggle(pid_t pid)
{
    if (!m_expanded.erase(pid))
        m_expanded.insert(pid);
}
