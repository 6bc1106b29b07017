#include "dashboard/TaskRanking.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

namespace {

const auto at = secondsAt;

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
std::vector<ApplicationLoad> loadsOf(const char *scores)
{
    std::vector<ApplicationLoad> loads;
    for (const QString &entry : QString::fromUtf8(scores).split(' ', Qt::SkipEmptyParts)) {
        const QStringList parts = entry.split('=');
        loads.push_back(loadWithScore(parts[0].toUtf8().constData(), parts[1].toDouble()));
    }
    return loads;
}

TEST(TaskRankingTest, OrderChangesOnlyAtAReorderAndOnlyForALeadOfMoreThanFivePoints)
{
    struct Tick {
        double time;
        const char *scores;
        const char *order;
    };
    struct Row {
        const char *description;
        std::vector<Tick> ticks;
    };
    // clang-format off
    const Row rows[] = {
        {"the first list keeps the grouping order", {{100, "a=10 b=90", "a b"}}},
        {"a newcomer joins at the end until 8 s after the last reorder",
         {{100, "a=10", "a"}, {107.99, "a=10 b=500", "a b"}, {108, "a=10 b=500", "b a"}}},
        {"each reorder starts the wait again", {{100, "a=10", "a"}, {108, "a=10 b=500", "b a"},
         {115.99, "a=10 b=500 c=900", "b a c"}, {116, "a=10 b=500 c=900", "c b a"}}},
        {"a lead of 4 holds", {{0, "f=66 b=70", "f b"}, {8, "f=66 b=70", "f b"}}},
        {"a lead of 5 holds", {{0, "f=65 b=70", "f b"}, {8, "f=65 b=70", "f b"}}},
        {"a lead of 5.1 passes", {{0, "f=64.9 b=70", "f b"}, {8, "f=64.9 b=70", "b f"}}},
        {"equal scores hold", {{0, "f=70 b=70", "f b"}, {8, "f=70 b=70", "f b"}}},
        {"equal scores keep their order across reorders", {{0, "c=30 a=30 b=30", "c a b"},
         {10, "c=30 a=30 b=30", "c a b"}, {20, "c=30 a=30 b=30", "c a b"}}},
        // c smooths to 0.35 * 200 + 0.65 * 10 = 76.5 and leads everyone.
        {"a rising task moves to the front in one reorder",
         {{0, "a=30 b=20 c=10", "a b c"}, {8, "a=30 b=20 c=200", "c a b"}}},
        // a: 50 -> 32.5 -> 21.125 -> 13.73; b stays 40 and passes at 8 s.
        {"ticks between reorders still feed the smoothing", {{0, "a=50 b=40", "a b"},
         {2, "a=0 b=40", "a b"}, {4, "a=0 b=40", "a b"}, {8, "a=0 b=40", "b a"}}},
        // a smooths to 0.35 * 10 + 0.65 * 50 = 36: 41.1 leads it by 5.1, 40.9 by 4.9.
        {"smoothed by the weights: passed", {{0, "a=50 b=41.1", "a b"}, {8, "a=10 b=41.1", "b a"}}},
        {"smoothed by the weights: held", {{0, "a=50 b=40.9", "a b"}, {8, "a=10 b=40.9", "a b"}}},
    };
    // clang-format on
    for (const Row &row : rows) {
        SCOPED_TRACE(row.description);
        Ranker ranker;
        for (const Tick &tick : row.ticks)
            EXPECT_EQ(ranker.tick(tick.time, loadsOf(tick.scores)), QString::fromUtf8(tick.order))
                << tick.time;
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
