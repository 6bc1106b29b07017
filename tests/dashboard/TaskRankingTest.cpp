#include "dashboard/TaskRanking.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

namespace {

// A load with one process per (pid, cpu); the first is the target.
ApplicationLoad loadWithScore(const char *id, double score, pid_t pid = 1)
{
    ApplicationLoad load;
    load.id = QString::fromUtf8(id);
    load.application = load.id;
    load.processes = {makeProcess(pid, 0, load.id, score)};
    load.target = load.processes.front();
    return load;
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

std::vector<QString> idsOf(const std::vector<ApplicationLoad> &loads)
{
    std::vector<QString> ids;
    for (const ApplicationLoad &load : loads)
        ids.push_back(load.id);
    return ids;
}

std::vector<QString> ids(std::initializer_list<const char *> names)
{
    std::vector<QString> result;
    for (const char *name : names)
        result.push_back(QString::fromUtf8(name));
    return result;
}

TimePoint at(double seconds)
{
    return TimePoint::fromSecondsSince1970(seconds);
}

// Drives rankLoads as the store does: the previous tick's order is the last result.
struct Ranker {
    TaskOrderState state;
    std::vector<DashboardTask> previous;

    std::vector<QString> tick(double seconds, std::vector<ApplicationLoad> loads)
    {
        const LoadIndexByID index = indexLoadsByID(loads);
        const auto ranked = rankLoads(std::move(loads), index, at(seconds), previous, state);
        previous = tasksFor(ranked);
        return idsOf(ranked);
    }
};

TEST(TaskRankingTest, FirstListKeepsTheGroupingOrderAndSeedsRawScores)
{
    Ranker ranker;
    EXPECT_EQ(ranker.tick(100, {loadWithScore("a", 10), loadWithScore("b", 90)}), ids({"a", "b"}));
    EXPECT_EQ(ranker.state.smoothedTaskScores.at("a"), 10.0);
    EXPECT_EQ(ranker.state.smoothedTaskScores.at("b"), 90.0);
    EXPECT_EQ(ranker.state.lastTaskRankingUpdate, at(100));
}

TEST(TaskRankingTest, SmoothingFallsFrom100To65To42Point25)
{
    Ranker ranker;
    ranker.tick(0, {loadWithScore("a", 100)});
    ranker.tick(2, {loadWithScore("a", 0)});
    EXPECT_DOUBLE_EQ(ranker.state.smoothedTaskScores.at("a"), 65.0);
    ranker.tick(4, {loadWithScore("a", 0)});
    EXPECT_DOUBLE_EQ(ranker.state.smoothedTaskScores.at("a"), 42.25);
}

TEST(TaskRankingTest, ReorderWaitsUntilEightSecondsAfterTheLast)
{
    struct Row {
        double secondTick;
        bool reordered;
    };
    const Row rows[] = {{107.99, false}, {108.0, true}, {150.0, true}};
    for (const Row &row : rows) {
        Ranker ranker;
        // "b" is new on the second tick with a huge score: it joins at the end.
        ranker.tick(100, {loadWithScore("a", 10)});
        const auto order =
            ranker.tick(row.secondTick, {loadWithScore("a", 10), loadWithScore("b", 500)});
        EXPECT_EQ(order, row.reordered ? ids({"b", "a"}) : ids({"a", "b"})) << row.secondTick;
        EXPECT_EQ(ranker.state.lastTaskRankingUpdate, at(row.reordered ? row.secondTick : 100.0));
    }
}

TEST(TaskRankingTest, PassingNeedsALeadOfMoreThanFivePoints)
{
    struct Row {
        double front;
        double behind;
        bool passes;
    };
    // Equal raw and smoothed scores: each load keeps one score on both ticks.
    const Row rows[] = {
        {66.0, 70.0, false}, {65.0, 70.0, false}, {64.9, 70.0, true}, {70.0, 70.0, false}};
    for (const Row &row : rows) {
        Ranker ranker;
        ranker.tick(0, {loadWithScore("front", row.front), loadWithScore("behind", row.behind)});
        const auto order = ranker.tick(
            8, {loadWithScore("front", row.front), loadWithScore("behind", row.behind)});
        EXPECT_EQ(order, row.passes ? ids({"behind", "front"}) : ids({"front", "behind"}))
            << row.front << " vs " << row.behind;
    }
}

TEST(TaskRankingTest, EqualScoresKeepTheirOrderAcrossReorders)
{
    Ranker ranker;
    std::vector<ApplicationLoad> loads = {loadWithScore("c", 30), loadWithScore("a", 30),
                                          loadWithScore("b", 30)};
    for (int tick = 0; tick < 6; ++tick)
        EXPECT_EQ(ranker.tick(tick * 10.0, loads), ids({"c", "a", "b"}));
}

TEST(TaskRankingTest, RisingTaskMovesToTheFrontInOneReorder)
{
    Ranker ranker;
    ranker.tick(0, {loadWithScore("a", 30), loadWithScore("b", 20), loadWithScore("c", 10)});
    // c jumps; after smoothing (0.35 * 200 + 0.65 * 10 = 76.5) it leads everyone.
    EXPECT_EQ(
        ranker.tick(8, {loadWithScore("a", 30), loadWithScore("b", 20), loadWithScore("c", 200)}),
        ids({"c", "a", "b"}));
}

TEST(TaskRankingTest, TicksBetweenReordersStillFeedTheSmoothing)
{
    Ranker ranker;
    ranker.tick(0, {loadWithScore("a", 50), loadWithScore("b", 40)});
    EXPECT_EQ(ranker.tick(2, {loadWithScore("a", 0), loadWithScore("b", 40)}), ids({"a", "b"}));
    EXPECT_EQ(ranker.tick(4, {loadWithScore("a", 0), loadWithScore("b", 40)}), ids({"a", "b"}));
    // a: 50 -> 32.5 -> 21.125 -> 13.73; b stays 40 and passes at 8 s.
    EXPECT_EQ(ranker.tick(8, {loadWithScore("a", 0), loadWithScore("b", 40)}), ids({"b", "a"}));
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
    EXPECT_EQ(ranker.tick(6, {loadWithScore("a", 1), loadWithScore("b", 99)}), ids({"a", "b"}));
    EXPECT_EQ(ranker.state.smoothedTaskScores.at("a"), 1.0);
}

TEST(TaskRankingTest, TargetsHoldForEightSecondsWhileTheirProcessLives)
{
    auto loadWithTarget = [](pid_t target) {
        ApplicationLoad load;
        load.id = QStringLiteral("t");
        load.processes = {makeProcess(1, 0, "sh"), makeProcess(2, 1, "a"), makeProcess(3, 1, "b")};
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

TEST(TaskRankingTest, SelectionFallsBackToTheFirstBusyLoadInGroupingOrder)
{
    const std::vector<ApplicationLoad> loads = {loadWithScore("idle", 0), loadWithScore("busy", 3),
                                                loadWithScore("busier", 50)};
    const std::vector<DashboardTask> tasks = tasksFor(loads);
    struct Row {
        const char *selected;
        std::vector<ApplicationLoad> loads;
        const char *expected;
    };
    const Row rows[] = {
        {"idle", loads, "idle"},                  // still listed: kept, even at score 0
        {"gone", loads, "busy"},                  // grouping order, not score order
        {"gone", {}, ""},                         // nothing grouped
        {"gone", {loadWithScore("idle", 0)}, ""}, // nothing busy
    };
    for (const Row &row : rows)
        EXPECT_EQ(
            keptTaskSelection(QString::fromUtf8(row.selected), tasks, firstBusyLoadID(row.loads)),
            QString::fromUtf8(row.expected))
            << row.selected;
}

} // namespace
