#include "dashboard/TaskRanking.h"

#include <QHash>

#include <algorithm>

LoadIndexByID indexLoadsByID(const std::vector<ApplicationLoad> &loads)
{
    LoadIndexByID index;
    index.reserve(qsizetype(loads.size()));
    for (std::size_t position = 0; position < loads.size(); ++position)
        index.insert(loads[position].id, position);
    return index;
}

std::vector<ApplicationLoad> rankLoads(std::vector<ApplicationLoad> loads,
                                       const LoadIndexByID &indexByID, TimePoint now,
                                       const std::vector<DashboardTask> &previousTasks,
                                       TaskOrderState &state)
{
    if (loads.empty()) {
        state.smoothedTaskScores.clear();
        state.lastTaskRankingUpdate.reset();
        return loads;
    }

    std::erase_if(state.smoothedTaskScores,
                  [&](const auto &entry) { return !indexByID.contains(entry.first); });
    // Each load's smoothed score, by its place in `loads`: the sort below
    // compares them many times, the map is asked once per load.
    std::vector<std::map<QString, double>::iterator> scores;
    scores.reserve(loads.size());
    for (const ApplicationLoad &load : loads) {
        const double raw = loadScore(load);
        const auto [entry, inserted] = state.smoothedTaskScores.try_emplace(load.id, raw);
        if (!inserted)
            entry->second = raw * TaskRankingConstants::newScoreWeight +
                            entry->second * TaskRankingConstants::oldScoreWeight;
        scores.push_back(entry);
    }

    if (previousTasks.empty()) {
        state.lastTaskRankingUpdate = now;
        return loads;
    }

    // The previous order, then newcomers in the grouping's order.
    std::vector<std::size_t> order;
    order.reserve(loads.size());
    std::vector<bool> placed(loads.size(), false);
    for (const DashboardTask &task : previousTasks) {
        const auto found = indexByID.constFind(task.id);
        if (found != indexByID.cend() && !placed[*found]) {
            placed[*found] = true;
            order.push_back(*found);
        }
    }
    for (std::size_t index = 0; index < loads.size(); ++index) {
        if (!placed[index])
            order.push_back(index);
    }

    const bool mayReorder =
        !state.lastTaskRankingUpdate ||
        now.secondsSince(*state.lastTaskRankingUpdate) >= TaskRankingConstants::reorderInterval;
    if (mayReorder) {
        // An insertion sort that moves a source forward only past predecessors
        // it leads by more than the passing lead: ties and small leads keep
        // the earlier order, which is what makes the ranking hold still.
        for (std::size_t position = 1; position < order.size(); ++position) {
            std::size_t j = position;
            while (j > 0) {
                const bool passes =
                    scores[order[j - 1]]->second + TaskRankingConstants::passingLead <
                    scores[order[j]]->second;
                if (!passes)
                    break;
                std::swap(order[j], order[j - 1]);
                --j;
            }
        }
        state.lastTaskRankingUpdate = now;
    }

    std::vector<ApplicationLoad> ranked;
    ranked.reserve(loads.size());
    for (std::size_t index : order)
        ranked.push_back(std::move(loads[index]));
    return ranked;
}

std::vector<ApplicationLoad> stabilizeTargets(std::vector<ApplicationLoad> loads,
                                              const LoadIndexByID &index, TimePoint now,
                                              TaskTargetState &state)
{
    if (loads.empty()) {
        state.stableTargetPIDs.clear();
        state.lastTargetRankingUpdate.reset();
        return loads;
    }
    std::erase_if(state.stableTargetPIDs,
                  [&](const auto &entry) { return !index.contains(entry.first); });
    const bool allowsRefresh =
        !state.lastTargetRankingUpdate ||
        now.secondsSince(*state.lastTargetRankingUpdate) >= TaskRankingConstants::reorderInterval;

    for (ApplicationLoad &load : loads) {
        const auto entry = state.stableTargetPIDs.try_emplace(load.id, load.target.identity.pid);
        if (entry.second)
            continue;
        pid_t &standingPID = entry.first->second;
        if (!allowsRefresh && standingPID != load.target.identity.pid) {
            const auto standing = std::find_if(
                load.processes.begin(), load.processes.end(),
                [&](const ProcessMetric &process) { return process.identity.pid == standingPID; });
            if (standing != load.processes.end())
                load.target = *standing;
        }
        standingPID = load.target.identity.pid;
    }
    if (allowsRefresh)
        state.lastTargetRankingUpdate = now;
    return loads;
}

const DashboardTask *findTask(const std::vector<DashboardTask> &tasks, const QString &taskID)
{
    const auto found = std::find_if(tasks.begin(), tasks.end(),
                                    [&](const DashboardTask &task) { return task.id == taskID; });
    return found == tasks.end() ? nullptr : &*found;
}

const DashboardProcessNode *findNodeWithID(const DashboardTask &task, const QString &nodeID)
{
    for (const DashboardProcessNode &root : task.processTree) {
        if (const DashboardProcessNode *node = root.nodeWithID(nodeID))
            return node;
    }
    return nullptr;
}

const DashboardProcessNode *findTargetNode(const DashboardTask &task)
{
    for (const DashboardProcessNode &root : task.processTree) {
        if (const DashboardProcessNode *node = root.nodeWithPID(task.targetProcess.pid))
            return node;
    }
    return nullptr;
}

QString firstBusyLoadID(const std::vector<ApplicationLoad> &loads)
{
    const auto firstBusy =
        std::find_if(loads.begin(), loads.end(),
                     [](const ApplicationLoad &load) { return loadScore(load) > 0; });
    return firstBusy == loads.end() ? QString() : firstBusy->id;
}

QString keptTaskSelection(const QString &selectedTaskID, const std::vector<DashboardTask> &allTasks,
                          const QString &firstBusyLoadID)
{
    if (findTask(allTasks, selectedTaskID))
        return selectedTaskID;
    return firstBusyLoadID;
}

std::optional<QString> keptProcessSelection(const std::optional<QString> &selectedProcessID,
                                            const DashboardTask *selectedTask)
{
    if (!selectedTask)
        return std::nullopt;
    if (selectedProcessID && findNodeWithID(*selectedTask, *selectedProcessID))
        return selectedProcessID;
    if (const DashboardProcessNode *target = findTargetNode(*selectedTask))
        return target->id;
    return std::nullopt;
}
