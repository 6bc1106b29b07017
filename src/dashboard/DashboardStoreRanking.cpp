// The load-source half of DashboardStore: ranking, tasks and selection.

#include "dashboard/DashboardStore.h"

#include "dashboard/DashboardTexts.h"
#include "process/ProcessNameOrder.h"
#include "process/TaskAssembly.h"
#include "process/TaskClassification.h"

#include <algorithm>

namespace {

constexpr std::size_t kLiveTaskCount = 4;

} // namespace

std::vector<ApplicationLoad> DashboardStore::rankForTick(std::vector<ApplicationLoad> loads,
                                                         TimePoint timestamp)
{
    // The process probe needs two readings for rates, so the first sample's
    // processes all read 0: ranking them would seed every smoothed score with
    // 0 and select nothing. Such a first sample ranks nothing; a first sample
    // with no processes at all does not use the gate up.
    bool gated = false;
    if (!loads.empty()) {
        ++m_processMetricSampleCount;
        gated = m_processMetricSampleCount == 1 &&
                std::all_of(loads.begin(), loads.end(),
                            [](const ApplicationLoad &load) { return loadScore(load) == 0.0; });
    }
    std::vector<ApplicationLoad> input = gated ? std::vector<ApplicationLoad>() : std::move(loads);
    const LoadIndexByID index = indexLoadsByID(input);
    std::vector<ApplicationLoad> ranked =
        rankLoads(std::move(input), index, timestamp, m_allTasks, m_taskOrder);
    return stabilizeTargets(std::move(ranked), index, timestamp, m_taskTargets);
}

void DashboardStore::publishTasks(const std::vector<ApplicationLoad> &rankedLoads, TickTexts &texts)
{
    std::vector<DashboardTask> tasks;
    tasks.reserve(rankedLoads.size());
    for (const ApplicationLoad &load : rankedLoads)
        tasks.push_back(assembleTask(load, TaskClassification::classify(load, &texts), texts));
    write(m_allTasks, std::move(tasks), Field::allTasks);
    const std::size_t liveCount = std::min(kLiveTaskCount, m_allTasks.size());
    write(m_liveTasks,
          std::vector<DashboardTask>(m_allTasks.begin(),
                                     m_allTasks.begin() + std::ptrdiff_t(liveCount)),
          Field::liveTasks);
}

void DashboardStore::keepSelectionValid(const QString &firstBusyLoadID)
{
    write(m_selectedTaskID, keptTaskSelection(m_selectedTaskID, m_allTasks, firstBusyLoadID),
          Field::selectedTaskID);
    write(m_selectedProcessID,
          keptProcessSelection(m_selectedProcessID, findTask(m_allTasks, m_selectedTaskID)),
          Field::selectedProcessID);
}

void DashboardStore::selectTask(const QString &taskID)
{
    const DashboardTask *task = findTask(m_allTasks, taskID);
    if (!task)
        return;
    NotificationBatch batch(*this);
    const DashboardProcessNode *target = findTargetNode(*task);
    write(m_selectedProcessID, target ? std::optional<QString>(target->id) : std::nullopt,
          Field::selectedProcessID);
    write(m_selectedTaskID, taskID, Field::selectedTaskID);
}

void DashboardStore::selectProcess(const QString &processNodeID)
{
    const DashboardTask *task = findTask(m_allTasks, m_selectedTaskID);
    if (!task || !findNodeWithID(*task, processNodeID))
        return;
    NotificationBatch batch(*this);
    write(m_selectedProcessID, std::optional<QString>(processNodeID), Field::selectedProcessID);
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

std::vector<DashboardTask> DashboardStore::visibleTasks() const
{
    std::vector<DashboardTask> tasks = m_liveTasks;
    const DashboardTask *selected = findTask(m_allTasks, m_selectedTaskID);
    if (selected && !findTask(m_liveTasks, selected->id))
        tasks.push_back(*selected);
    return tasks;
}
