#include "dashboard/TaskRanking.h"
#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

namespace {

const auto at = secondsAt;

// A load of one process, its target, scoring `score`.
ApplicationLoad loadWithScore(const QString &id, double score, pid_t pid = 1)
{
    return makeLoad(id, {makeProcess(pid, 0, id, score)});
}

std::vector<DashboardTask> tasksFor(const std::vector<ApplicationLoad> &loads)
{
    std::vector<DashboardTask> tasks;
    for (const ApplicationLoad &load : loads) {
        DashboardTask task;
        task.id = load.id;
        tasks.push_back(task);
    }
    return tasks;
}

// Drives rankLoads as the store does: the previous tick's order is the last result.
struct Ranker {
    TaskOrderState state;
    std::vector<DashboardTask> previous;

    // The ids in the order given back, as "b a".
    QString tick(double seconds, std::vector<ApplicationLoad> loads)
    {
        const LoadIndexByID index = indexLoadsByID(loads);
        const auto ranked = rankLoads(std::move(loads), index, at(seconds), previous, state);
        previous = tasksFor(ranked);
        QStringList ids;
        for (const ApplicationLoad &load : ranked)
            ids << load.id;
        return ids.join(' ');
    }
};

// Loads written as "a=10 b=90": each its own id and raw score, in grouping order.
std::vector<ApplicationLoad> loadsOf(const QString &scores)
{
    std::vector<ApplicationLoad> loads;
    for (const QString &entry : scores.split(' ', Qt::SkipEmptyParts)) {
        const QStringList parts = entry.split('=');
        loads.push_back(loadWithScore(parts[0], parts[1].toDouble()));
    }
    return loads;
}

// The order changes only at a reorder and only for a lead of more than five points.
TEST(TaskRankingTest, OrderChangesOnlyAtAReorderAndOnlyForALeadOfMoreThanFivePoints)
{
    QString run;
    Ranker ranker;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("task-order-ticks"))) {
        if (*row.text(0) != run) {
            run = *row.text(0);
            ranker = Ranker();
        }
        EXPECT_EQ(ranker.tick(row.text(1)->toDouble(), loadsOf(*row.text(2))), *row.text(3))
            << row.where;
    }
}

TEST(TaskRankingTest, VanishedTasksLoseTheirScoresAndAnEmptyListResets)
{
    Ranker ranker;
    ranker.tick(0, {loadWithScore("a", 10), loadWithScore("b", 20)});
    ranker.tick(2, {loadWithScore("b", 20)});
    EXPECT_FALSE(ranker.state.smoothedTaskScores.contains("a"));
    ranker.tick(4, {});
    EXPECT_EQ(ranker.state, TaskOrderState{});
    // Starts over: raw scores, the grouping's order.
    EXPECT_EQ(ranker.tick(6, {loadWithScore("a", 1), loadWithScore("b", 99)}), "a b");
    EXPECT_EQ(ranker.state.smoothedTaskScores.at("a"), 1.0);
}

TEST(TaskRankingTest, TargetsHoldForEightSecondsWhileTheirProcessLives)
{
    auto loadWithTarget = [](pid_t target) {
        ApplicationLoad load = makeLoad(
            "t", {makeProcess(1, 0, "sh"), makeProcess(2, 1, "a"), makeProcess(3, 1, "b")});
        load.target = load.processes[std::size_t(target - 1)];
        return load;
    };
    TaskTargetState state;
    auto stabilize = [&](double seconds, std::vector<ApplicationLoad> loads) {
        const LoadIndexByID index = indexLoadsByID(loads);
        return stabilizeTargets(std::move(loads), index, at(seconds), state);
    };
    auto targetAt = [&](double seconds, ApplicationLoad load) {
        return stabilize(seconds, {std::move(load)}).front().target.identity.pid;
    };
    EXPECT_EQ(targetAt(0, loadWithTarget(2)), 2);
    EXPECT_EQ(state.lastTargetRankingUpdate, at(0));
    EXPECT_EQ(targetAt(2, loadWithTarget(3)), 2);    // held
    EXPECT_EQ(targetAt(7.99, loadWithTarget(3)), 2); // still held
    EXPECT_EQ(state.lastTargetRankingUpdate, at(0));
    EXPECT_EQ(targetAt(8, loadWithTarget(3)), 3); // refreshed
    EXPECT_EQ(state.lastTargetRankingUpdate, at(8));

    // The standing process leaves the load: the new target is taken at once.
    ApplicationLoad without = loadWithTarget(2);
    without.processes.erase(without.processes.begin() + 2); // pid 3 gone
    EXPECT_EQ(targetAt(10, without), 2);
    EXPECT_EQ(state.stableTargetPIDs.at("t"), 2);

    // A task that vanishes loses its standing target; the others keep theirs.
    ApplicationLoad other = loadWithScore("u", 1, 9);
    stabilize(11, {loadWithTarget(2), other});
    EXPECT_EQ(state.stableTargetPIDs.size(), 2u);
    stabilize(12, {other});
    EXPECT_EQ(state.stableTargetPIDs, (std::map<QString, pid_t>{{"u", 9}}));

    EXPECT_TRUE(stabilize(14, {}).empty());
    EXPECT_EQ(state, TaskTargetState{});
}

} // namespace
