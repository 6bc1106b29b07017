#include "dashboard/DashboardTexts.h"
#include "support/StoreTesting.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

SystemMetricSample sampleAt(double seconds, QList<ProcessMetric> processes)
{
    return makeSample({.time = seconds, .processes = std::move(processes)});
}

// The tasks' applications, as "worker editor".
QString applicationsOf(const std::vector<DashboardTask> &tasks)
{
    QStringList names;
    for (const DashboardTask &task : tasks)
        names << task.application;
    return names.join(' ');
}

QString idOf(const DashboardStore &store, const char *application)
{
    for (const DashboardTask &task : store.allTasks()) {
        if (task.application == QString::fromUtf8(application))
            return task.id;
    }
    return {};
}

// Three separate lineages: a shell running a busy worker, an editor, an idle daemon.
QList<ProcessMetric> desk(double workerCPU = 60.0, double editorCPU = 10.0)
{
    return {makeProcess(10, 1, "zsh"), makeProcess(11, 10, "worker", workerCPU),
            makeProcess(20, 1, "editor", editorCPU), makeProcess(30, 1, "daemon")};
}

QList<ProcessMetric> idle(QList<ProcessMetric> processes)
{
    for (ProcessMetric &process : processes) {
        process.cpuPercent = 0.0;
        process.diskBytesPerSecond = 0.0;
    }
    return processes;
}

TEST(DashboardStoreTasksTest, FirstSampleOfZeroesRanksNothingAndTheSecondRanks)
{
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, idle(desk())));
    EXPECT_EQ(store->processMetricSampleCount(), 1);
    EXPECT_TRUE(store->allTasks().empty());
    EXPECT_EQ(store->selectedTaskID(), QString());
    EXPECT_TRUE(store->smoothedTaskScores().empty());
    EXPECT_FALSE(store->lastTaskRankingUpdate());
    EXPECT_FALSE(store->lastTargetRankingUpdate());
    EXPECT_EQ(store->selectedDiagnosis(), placeholderDiagnosis(true));

    store->ingest(sampleAt(102, desk()));
    EXPECT_EQ(applicationsOf(store->allTasks()), "worker editor daemon");
    EXPECT_EQ(store->liveTasks(), store->allTasks()); // fewer than four: all of them
    EXPECT_EQ(store->selectedTaskID(), idOf(*store, "worker"));
    EXPECT_EQ(store->selectedProcessID(),
              processNodeKey(11, TimePoint::fromSecondsSince1970(1011)));
    EXPECT_EQ(store->selectedDiagnosis().title, QStringLiteral("worker 存在未归因的持续负载。"));
    EXPECT_EQ(store->selectedProcess()->pid, 11);
}

TEST(DashboardStoreTasksTest, GateIsUsedOnlyByAFirstSampleWithLoads)
{
    struct Row {
        const char *name;
        std::vector<QList<ProcessMetric>> samples;
        qint64 count;
        std::size_t tasks;
    };
    const Row rows[] = {
        {"empty first sample does not use the gate up", {{}, idle(desk())}, 1, 0},
        {"busy first sample passes at once", {desk()}, 1, 3},
        {"second idle sample passes whatever its scores", {idle(desk()), idle(desk())}, 2, 3},
    };
    for (const Row &row : rows) {
        auto store = makeStoreForTesting();
        double time = 100;
        for (const auto &processes : row.samples)
            store->ingest(sampleAt(time += 2, processes));
        EXPECT_EQ(store->processMetricSampleCount(), row.count) << row.name;
        EXPECT_EQ(store->allTasks().size(), row.tasks) << row.name;
    }
}

TEST(DashboardStoreTasksTest, IdleSecondSampleSelectsNothing)
{
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, idle(desk())));
    store->ingest(sampleAt(102, idle(desk())));
    EXPECT_EQ(store->allTasks().size(), 3u);
    EXPECT_EQ(store->selectedTaskID(), QString()); // score 0 is never selected by the program
    EXPECT_EQ(store->selectedProcessID(), std::nullopt);
    EXPECT_EQ(store->selectedDiagnosis(), placeholderDiagnosis(false));
}

TEST(DashboardStoreTasksTest, EmptySampleClearsTasksAndRankingButKeepsTheCount)
{
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, desk()));
    store->ingest(sampleAt(102, desk()));
    store->ingest(sampleAt(104, {}));
    EXPECT_TRUE(store->allTasks().empty());
    EXPECT_TRUE(store->smoothedTaskScores().empty());
    EXPECT_TRUE(store->stableTargetPIDs().empty());
    EXPECT_FALSE(store->lastTaskRankingUpdate());
    EXPECT_FALSE(store->lastTargetRankingUpdate());
    EXPECT_EQ(store->selectedTaskID(), QString());
    EXPECT_EQ(store->processMetricSampleCount(), 2);
}

TEST(DashboardStoreTasksTest, VanishedSelectedTaskMovesSelectionToFirstBusyInGroupingOrder)
{
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, desk()));
    store->selectTask(idOf(*store, "editor"));
    ASSERT_EQ(store->selectedTaskID(), idOf(*store, "editor"));

    // The editor exits; the daemon now works harder than the worker, but the
    // grouping order puts it first, so it is chosen, target node included.
    store->ingest(sampleAt(102, {makeProcess(10, 1, "zsh"), makeProcess(11, 10, "worker", 5.0),
                                 makeProcess(30, 1, "daemon", 40.0)}));
    EXPECT_EQ(store->selectedTaskID(), idOf(*store, "daemon"));
    EXPECT_EQ(store->selectedProcessID(),
              processNodeKey(30, TimePoint::fromSecondsSince1970(1030)));
}

TEST(DashboardStoreTasksTest, ExitedSelectedProcessMovesToTheTargetNode)
{
    auto store = makeStoreForTesting();
    QList<ProcessMetric> processes = desk();
    processes.append(makeProcess(12, 10, "helper", 1.0));
    store->ingest(sampleAt(100, processes));
    store->selectTask(idOf(*store, "worker"));
    const QString helperNode = processNodeKey(12, TimePoint::fromSecondsSince1970(1012));
    store->selectProcess(helperNode);
    EXPECT_EQ(store->selectedProcessID(), helperNode);
    EXPECT_EQ(store->selectedProcess()->name, QStringLiteral("helper"));

    store->ingest(sampleAt(102, processes)); // still there: kept
    EXPECT_EQ(store->selectedProcessID(), helperNode);
    store->ingest(sampleAt(104, desk())); // gone: the target's node
    EXPECT_EQ(store->selectedProcessID(),
              processNodeKey(11, TimePoint::fromSecondsSince1970(1011)));
}

TEST(DashboardStoreTasksTest, SelectionOperationsIgnoreWhatIsNotThere)
{
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, desk()));
    const QString worker = idOf(*store, "worker");
    const QString daemonNode = processNodeKey(30, TimePoint::fromSecondsSince1970(1030));
    const QString workerNode = processNodeKey(11, TimePoint::fromSecondsSince1970(1011));
    ASSERT_EQ(store->selectedTaskID(), worker);

    QSignalSpy changed(store.get(), &DashboardStore::changed);
    store->selectTask(QStringLiteral("task-none"));
    store->selectProcess(daemonNode); // a node of another task
    store->selectProcess(QStringLiteral("1-2.0"));
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(store->selectedProcessID(), workerNode);

    // Re-selecting the task always moves the process selection to its target.
    store->selectProcess(processNodeKey(10, TimePoint::fromSecondsSince1970(1010)));
    EXPECT_EQ(store->selectedProcess()->name, QStringLiteral("zsh"));
    store->selectTask(worker);
    EXPECT_EQ(store->selectedProcessID(), workerNode);
}

TEST(DashboardStoreTasksTest, LiveTasksAreTheFirstFourAndTheSelectionStaysVisible)
{
    QList<ProcessMetric> processes;
    for (int index = 0; index < 6; ++index)
        processes.append(
            makeProcess(100 + index, 1, QStringLiteral("p%1").arg(index), 60.0 - index));
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, processes));
    const std::vector<DashboardTask> all = store->allTasks();
    EXPECT_EQ(store->liveTasks(), std::vector<DashboardTask>(all.begin(), all.begin() + 4));
    EXPECT_EQ(store->visibleTasks(), store->liveTasks());

    store->selectTask(all[5].id);
    const std::vector<DashboardTask> visible = store->visibleTasks();
    ASSERT_EQ(visible.size(), 5u);
    EXPECT_EQ(visible.back(), all[5]);
    EXPECT_EQ(store->selectedDiagnosis(), all[5].diagnosis);
}

TEST(DashboardStoreTasksTest, OrderAndTargetsHoldBetweenReorders)
{
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, desk(60.0, 10.0)));
    EXPECT_EQ(applicationsOf(store->allTasks()), "worker editor daemon");
    // The editor overtakes; the order holds until 8 s after the last reorder.
    store->ingest(sampleAt(102, desk(0.0, 300.0)));
    EXPECT_EQ(applicationsOf(store->allTasks()), "worker editor daemon");
    store->ingest(sampleAt(108, desk(0.0, 300.0)));
    EXPECT_EQ(applicationsOf(store->allTasks()), "editor worker daemon");
}

TEST(DashboardStoreTasksTest, EqualTicksDoNotNotifyTaskObservers)
{
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, desk()));
    QSignalSpy all(store.get(), &DashboardStore::allTasksChanged);
    QSignalSpy selected(store.get(), &DashboardStore::selectedTaskIDChanged);
    store->ingest(sampleAt(102, desk()));
    EXPECT_EQ(all.count(), 0);
    EXPECT_EQ(selected.count(), 0);
}

} // namespace
