// The selection: kept valid after each tick, moved by the user, and read by
// every page through the same accessors, so that no page looks the selected
// task up on its own.

#include "dashboard/DashboardStore.h"
#include "dashboard/DashboardTexts.h"

#include "dashboard/TaskRanking.h"

void DashboardStore::keepSelectionValid(const QString &firstBusyLoadID)
{
    write(m_selectedTaskID, keptTaskSelection(m_selectedTaskID, m_allTasks, firstBusyLoadID),
          &DashboardStore::selectedTaskIDChanged);
    write(m_selectedProcessID,
          keptProcessSelection(m_selectedProcessID, findTask(m_allTasks, m_selectedTaskID)),
          &DashboardStore::selectedProcessIDChanged);
}

void DashboardStore::selectTask(const QString &taskID)
{
    const DashboardTask *task = findTask(m_allTasks, taskID);
    if (!task)
        return;
    NotificationBatch batch(*this);
    const DashboardProcessNode *target = findTargetNode(*task);
    write(m_selectedProcessID, target ? std::optional<QString>(target->id) : std::nullopt,
          &DashboardStore::selectedProcessIDChanged);
    write(m_selectedTaskID, taskID, &DashboardStore::selectedTaskIDChanged);
}

void DashboardStore::selectProcess(const QString &processNodeID)
{
    const DashboardTask *task = findTask(m_allTasks, m_selectedTaskID);
    if (!task || !findNodeWithID(*task, processNodeID))
        return;
    NotificationBatch batch(*this);
    write(m_selectedProcessID, std::optional<QString>(processNodeID),
          &DashboardStore::selectedProcessIDChanged);
}

std::optional<DashboardProcessNode> DashboardStore::selectedProcess() const
{
    const DashboardTask *task = findTask(m_allTasks, m_selectedTaskID);
    if (!task)
        return std::nullopt;
    const DashboardProcessNode *node =
        m_selectedProcessID ? findNodeWithID(*task, *m_selectedProcessID) : findTargetNode(*task);
    return node ? std::optional<DashboardProcessNode>(*node) : std::nullopt;
}

TaskDiagnosis DashboardStore::selectedDiagnosis() const
{
    if (const DashboardTask *task = findTask(m_allTasks, m_selectedTaskID))
        return task->diagnosis;
    return placeholderDiagnosis(m_liveTasks.empty());
}

std::vector<const DashboardTask *> DashboardStore::visibleTasks() const
{
    std::vector<const DashboardTask *> tasks;
    tasks.reserve(m_liveTasks.size() + 1);
    for (const DashboardTask &task : m_liveTasks)
        tasks.push_back(&task);
    const DashboardTask *selected = findTask(m_allTasks, m_selectedTaskID);
    if (selected && !findTask(m_liveTasks, selected->id))
        tasks.push_back(selected);
    return tasks;
}

const DashboardTask *DashboardStore::selectedTask() const
{
    return findTask(m_allTasks, m_selectedTaskID);
}
