#pragma once

#include "dashboard/DashboardModel.h"
#include "process/ApplicationLoad.h"
#include "sampling/TimePoint.h"

#include <QHash>
#include <QString>

#include <map>
#include <optional>
#include <sys/types.h>
#include <vector>

// Keeps the order of the load sources, and the process that stands for each,
// still unless the load has really changed: an exponential average takes the
// spikes out of each score, the order changes at most once per 8 seconds, and
// within such a change a source passes another only with a lead of more than
// 5 points. The functions are pure over the state they are handed; the store
// owns that state and calls them once per sample, in this order.

struct TaskRankingConstants {
    static constexpr double oldScoreWeight = 0.65;
    static constexpr double newScoreWeight = 0.35;
    static constexpr double reorderInterval = 8.0; // seconds; reached at equality
    static constexpr double passingLead = 5.0;     // points; strictly more is needed
};

struct TaskOrderState {
    std::map<QString, double> smoothedTaskScores; // by task id, only ids of the current list
    std::optional<TimePoint> lastTaskRankingUpdate;

    bool operator==(const TaskOrderState &) const = default;
};

struct TaskTargetState {
    std::map<QString, pid_t> stableTargetPIDs; // by task id, only ids of the current list
    std::optional<TimePoint> lastTargetRankingUpdate;

    bool operator==(const TaskTargetState &) const = default;
};

// Where each load of one tick's grouping is, by id: built once per tick and
// handed to both steps below, which need it for what the state forgets.
using LoadIndexByID = QHash<QString, std::size_t>;
LoadIndexByID indexLoadsByID(const std::vector<ApplicationLoad> &loads);

// The loads in display order. `previousTasks` is the task list of the previous
// tick: its order is kept between reorders, and new sources join at its end.
// With no previous tasks the grouping's own order stands.
// `index` is `indexLoadsByID(loads)`.
std::vector<ApplicationLoad> rankLoads(std::vector<ApplicationLoad> loads,
                                       const LoadIndexByID &index, TimePoint now,
                                       const std::vector<DashboardTask> &previousTasks,
                                       TaskOrderState &state);

// The same loads with each target held for up to 8 seconds, as long as the
// process that stood for the source is still one of its members. `index`
// indexes the same loads in any order (the grouping's, before ranking).
std::vector<ApplicationLoad> stabilizeTargets(std::vector<ApplicationLoad> loads,
                                              const LoadIndexByID &index, TimePoint now,
                                              TaskTargetState &state);

// Selection kept valid after a tick. The task: kept while it is still listed,
// else the first source of the grouping's order with a positive score
// (`firstBusyLoadID` of the grouping's list, not the ranked one), else none
// (the empty text).
QString firstBusyLoadID(const std::vector<ApplicationLoad> &loads);
QString keptTaskSelection(const QString &selectedTaskID, const std::vector<DashboardTask> &allTasks,
                          const QString &firstBusyLoadID);
// The process: kept while its node is still in the selected task's tree,
// else the task's target node, else none.
std::optional<QString> keptProcessSelection(const std::optional<QString> &selectedProcessID,
                                            const DashboardTask *selectedTask);

// Lookups shared by the selection operations.
const DashboardTask *findTask(const std::vector<DashboardTask> &tasks, const QString &taskID);
const DashboardProcessNode *findNodeWithID(const DashboardTask &task, const QString &nodeID);
const DashboardProcessNode *findTargetNode(const DashboardTask &task);
