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

// The warm-up gate holds back only the first sample with processes, and only
// when all its scores are 0; nothing is selected at a score of 0.
TEST(DashboardStoreTasksTest, GateIsUsedOnlyByAFirstSampleWithLoads)
{
    struct Row {
        const char *name;
        std::vector<QList<ProcessMetric>> samples;
        std::size_t tasks;
        const char *selected;
    };
    const Row rows[] = {
        {"empty first sample does not use the gate up", {{}, idle(desk())}, 0, nullptr},
        {"busy first sample passes at once", {desk()}, 3, "worker"},
        {"an idle first sample is held back", {idle(desk())}, 0, nullptr},
        {"the sample after it ranks", {idle(desk()), desk()}, 3, "worker"},
        {"second idle sample ranks, selects nothing", {idle(desk()), idle(desk())}, 3, nullptr},
        {"an empty sample clears tasks and selection", {desk(), {}}, 0, nullptr},
        {"the gate is not used again after it", {desk(), {}, idle(desk())}, 3, nullptr},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        auto store = makeStoreForTesting();
        double time = 100;
        for (const auto &processes : row.samples)
            store->ingest(sampleAt(time += 2, processes));
        EXPECT_EQ(store->allTasks().size(), row.tasks);
        EXPECT_EQ(store->selectedTaskID(), row.selected ? idOf(*store, row.selected) : QString());
        if (!row.selected)
            EXPECT_EQ(store->selectedDiagnosis(), placeholderDiagnosis(row.tasks == 0));
    }
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

// A process selection holds while its node is listed and moves to the
// target's node when it leaves; user selections of what is not there, or of
// another task's node, change nothing.
TEST(DashboardStoreTasksTest, ProcessSelectionFollowsTheTreeAndIgnoresWhatIsNotThere)
{
    auto store = makeStoreForTesting();
    QList<ProcessMetric> processes = desk();
    processes.append(makeProcess(12, 10, "helper", 1.0));
    store->ingest(sampleAt(100, processes));
    const QString workerNode = processNodeKey(11, TimePoint::fromSecondsSince1970(1011));
    const QString helperNode = processNodeKey(12, TimePoint::fromSecondsSince1970(1012));
    ASSERT_EQ(store->selectedTaskID(), idOf(*store, "worker"));
    QSignalSpy changed(store.get(), &DashboardStore::changed);
    store->selectTask(QStringLiteral("task-none"));
    store->selectProcess(processNodeKey(30, TimePoint::fromSecondsSince1970(1030))); // daemon's
    store->selectProcess(QStringLiteral("1-2.0"));
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(store->selectedProcessID(), workerNode);

    store->selectProcess(helperNode);
    EXPECT_EQ(store->selectedProcess()->name, QStringLiteral("helper"));
    store->ingest(sampleAt(102, processes)); // still there: kept
    EXPECT_EQ(store->selectedProcessID(), helperNode);
    store->ingest(sampleAt(104, desk())); // gone: the target's node
    EXPECT_EQ(store->selectedProcessID(), workerNode);
    // Re-selecting the task always moves the process selection to its target.
    store->selectProcess(processNodeKey(10, TimePoint::fromSecondsSince1970(1010)));
    store->selectTask(idOf(*store, "worker"));
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
    const auto visibleTasks = [&] {
        std::vector<DashboardTask> tasks;
        for (const DashboardTask *task : store->visibleTasks())
            tasks.push_back(*task);
        return tasks;
    };
    EXPECT_EQ(visibleTasks(), store->liveTasks());

    store->selectTask(all[5].id);
    const std::vector<DashboardTask> visible = visibleTasks();
    ASSERT_EQ(visible.size(), 5u);
    EXPECT_EQ(visible.back(), all[5]);
    EXPECT_EQ(store->selectedDiagnosis(), all[5].diagnosis);
}

// The order holds until 8 s after the last reorder; a tick that changes no
// task tells no task observer.
TEST(DashboardStoreTasksTest, OrderHoldsBetweenReordersAndEqualTicksDoNotNotify)
{
    auto store = makeStoreForTesting();
    store->ingest(sampleAt(100, desk(60.0, 10.0)));
    QSignalSpy all(store.get(), &DashboardStore::allTasksChanged);
    QSignalSpy selected(store.get(), &DashboardStore::selectedTaskIDChanged);
    store->ingest(sampleAt(102, desk(60.0, 10.0)));
    EXPECT_EQ(all.count(), 0);
    store->ingest(sampleAt(104, desk(0.0, 300.0))); // the editor overtakes
    EXPECT_EQ(applicationsOf(store->allTasks()), "worker editor daemon");
    store->ingest(sampleAt(108, desk(0.0, 300.0)));
    EXPECT_EQ(applicationsOf(store->allTasks()), "editor worker daemon");
    EXPECT_EQ(selected.count(), 0);
}

} // namespace
