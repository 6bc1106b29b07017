// Incident life cycles, driven as sequences of samples.

#include "dashboard/DashboardIncidentTracker.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <optional>
#include <tuple>

namespace {

using Status = DashboardIncidentStatus;
using Thermal = SystemThermalState;
const auto at = secondsAt;

// Hot by temperature and load; calm at any load.
SystemMetricSample hot(double time, double cpu = 50.0, double temperature = 80.0)
{
    return makeSample({.time = time, .cpu = cpu, .temperature = temperature, .fan = 2000.0});
}
SystemMetricSample calm(double time)
{
    return makeSample({.time = time, .cpu = 20.0, .temperature = 50.0, .fan = 1200.0});
}

TEST(DashboardIncidentTracker, OpensGathersPointsAndPeaksThenClosesOnFirstCalmSample)
{
    DashboardIncidentTracker tracker;
    const DashboardTask vite = makeTask("vite", 60.0);

    // System CPU 10 but the task's sum is 60: the opening peak takes the task.
    tracker.observe(hot(100.0, 10.0, 80.0), &vite);
    ASSERT_EQ(tracker.incidents().size(), 1u);
    const DashboardIncident &opened = tracker.incidents().front();
    EXPECT_EQ(tracker.activeIncidentID(), opened.id);
    EXPECT_EQ(opened.startedAt, at(100.0));
    EXPECT_EQ(opened.application, "vite");
    EXPECT_EQ(opened.detail, "vite detail");
    EXPECT_EQ(opened.peakCPU, 60.0);
    EXPECT_EQ(opened.peakTemperature, 80.0);
    ASSERT_EQ(opened.points.size(), 1u);
    EXPECT_EQ(opened.points.front(), (DashboardIncidentPoint{at(100.0), 10.0, 80.0, 2000.0}));

    // Afterwards only the system's figure raises the peak: the task's 200 doesn't.
    const DashboardTask busier = makeTask("vite", 200.0);
    tracker.observe(hot(102.0, 50.0, 78.0), &busier);
    EXPECT_EQ(tracker.incidents().front().peakCPU, 60.0);
    EXPECT_EQ(tracker.incidents().front().peakTemperature, 80.0);

    // Thermal pressure keeps it hot without a temperature; the peak stays.
    tracker.observe(makeSample({.time = 104.0, .thermal = Thermal::fair}), &busier);
    tracker.observe(hot(106.0, 55.0, 86.5), nullptr); // no task: goes on
    EXPECT_EQ(tracker.incidents().front().peakCPU, 60.0);
    EXPECT_EQ(tracker.incidents().front().peakTemperature, 86.5);

    tracker.observe(
        makeSample({.time = 108.0, .thermal = Thermal::fair, .cpu = 95.0, .temperature = 70.0}),
        nullptr);
    EXPECT_EQ(tracker.incidents().front().peakCPU, 95.0);
    EXPECT_EQ(tracker.incidents().front().peakTemperature, 86.5);

    // One calm sample closes it, and still leaves its point.
    tracker.observe(calm(110.0), &busier);
    ASSERT_EQ(tracker.incidents().size(), 1u);
    const DashboardIncident closed = tracker.incidents().front();
    EXPECT_EQ(tracker.activeIncident(), nullptr);
    EXPECT_EQ(closed.status, Status::recoveredWithoutAction);
    EXPECT_EQ(closed.endedAt, at(110.0));
    ASSERT_EQ(closed.points.size(), 6u);
    EXPECT_EQ(closed.points[2],
              (DashboardIncidentPoint{at(104.0), std::nullopt, std::nullopt, std::nullopt}));
    EXPECT_EQ(closed.points.back(), (DashboardIncidentPoint{at(110.0), 20.0, 50.0, 1200.0}));

    // A closed incident stays closed: the next hot sample opens a new one in front.
    tracker.observe(hot(112.0), &vite);
    ASSERT_EQ(tracker.incidents().size(), 2u);
    EXPECT_EQ(tracker.incidents()[1], closed);
    EXPECT_NE(tracker.incidents()[0].id, tracker.incidents()[1].id);
    EXPECT_EQ(tracker.activeIncidentID(), tracker.incidents()[0].id);
}

TEST(DashboardIncidentTracker, OpensWithoutTemperatureUnderThermalPressure)
{
    DashboardIncidentTracker tracker;
    const DashboardTask idle = makeTask("idle", 0.0);
    tracker.observe(makeSample({.time = 0.0, .thermal = Thermal::fair}), &idle);
    ASSERT_NE(tracker.activeIncident(), nullptr);
    EXPECT_EQ(tracker.activeIncident()->peakCPU, 0.0); // unreadable CPU counts as 0
    EXPECT_EQ(tracker.activeIncident()->peakTemperature, std::nullopt);

    tracker.observe(
        makeSample({.time = 2.0, .thermal = Thermal::serious, .cpu = 5.0, .temperature = 72.0}),
        &idle);
    EXPECT_EQ(tracker.activeIncident()->peakTemperature, 72.0); // first reading sets it
    EXPECT_EQ(tracker.activeIncident()->peakCPU, 5.0);
}

TEST(DashboardIncidentTracker, HotMachineWithoutTaskOrCalmMachineOpensNothing)
{
    DashboardIncidentTracker tracker;
    const DashboardTask busy = makeTask("busy", 100.0);
    tracker.observe(hot(0.0), nullptr);
    tracker.observe(
        makeSample({.time = 2.0, .thermal = Thermal::critical, .cpu = 90.0, .temperature = 99.0}),
        nullptr);
    tracker.observe(calm(4.0), &busy);
    // Loaded but unreadable temperature.
    tracker.observe(makeSample({.time = 6.0, .cpu = 100.0}), &busy);
    EXPECT_EQ(tracker, DashboardIncidentTracker());
}

TEST(DashboardIncidentTracker, ActionWithoutSampleAndIncidentChangesNothing)
{
    DashboardIncidentTracker tracker;
    tracker.recordAction(makeTask("make"), std::nullopt, at(1.0), nullptr);
    EXPECT_EQ(tracker, DashboardIncidentTracker());

    // With one closed incident in the log, the action doesn't touch it either.
    const DashboardTask make = makeTask("make", 80.0);
    tracker.observe(hot(2.0), &make);
    tracker.observe(calm(4.0), &make);
    const DashboardIncidentTracker before = tracker;
    tracker.recordAction(make, std::nullopt, at(5.0), nullptr);
    EXPECT_EQ(tracker, before);
}

TEST(DashboardIncidentTracker, ActionOnActiveIncidentOverwritesEarlierActionAndKeepsStatus)
{
    DashboardIncidentTracker tracker;
    const DashboardTask cargo = makeTask("cargo", 90.0, TaskKind::build);
    tracker.observe(hot(0.0), &cargo);
    const SystemMetricSample later = hot(3.0);

    tracker.recordAction(cargo, QStringLiteral("rustc"), at(3.0), &later);
    tracker.recordAction(cargo, std::nullopt, at(7.0), &later);
    ASSERT_EQ(tracker.incidents().size(), 1u); // no second incident while one is active
    const DashboardIncident &incident = tracker.incidents().front();
    EXPECT_EQ(incident.action, QStringLiteral("结束 cargo 构建"));
    EXPECT_EQ(incident.actionAt, at(7.0));
    EXPECT_EQ(incident.status, Status::observing);
    EXPECT_EQ(incident.points.size(), 1u); // an action adds no point
}

TEST(DashboardIncidentTracker, ActionTextNamesProcessThenBuildThenTask)
{
    const std::tuple<TaskKind, std::optional<QString>, const char *> rows[] = {
        {TaskKind::build, "cc1plus", "结束 cc1plus 子进程"},
        {TaskKind::test, "node", "结束 node 子进程"},
        {TaskKind::build, std::nullopt, "结束 Gradle 构建"},
        {TaskKind::test, std::nullopt, "结束 Gradle 任务"},
        {TaskKind::unknown, std::nullopt, "结束 Gradle 任务"},
        {TaskKind::unknown, "a%1b", "结束 a%1b 子进程"}, // a placeholder is inserted as it stands
    };
    for (const auto &[kind, processName, expected] : rows)
        EXPECT_EQ(incidentActionText(makeTask("Gradle", 1.0, kind), processName),
                  QString::fromUtf8(expected));
}

TEST(DashboardIncidentTracker, VerdictClosesActiveIncidentWithItsStatus)
{
    using Recovery = DashboardRecoveryState;
    struct Row {
        Recovery state;
        std::optional<Status> closesAs; // absent: stays open
    };
    const Row rows[] = {
        {Recovery::idle, std::nullopt},
        {Recovery::recovering, std::nullopt},
        {Recovery::recovered, Status::improved},
        {Recovery::noImprovement, Status::noImprovement},
        {Recovery::insufficientData, Status::insufficientData},
        {Recovery::terminationFailed, Status::actionFailed},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(static_cast<int>(row.state));
        DashboardIncidentTracker tracker;
        const DashboardTask node = makeTask("node", 60.0);
        tracker.observe(hot(0.0), &node);
        tracker.finishActiveIncident(row.state, at(9.0));
        const DashboardIncident &incident = tracker.incidents().front();
        EXPECT_EQ(incident.status, row.closesAs.value_or(Status::observing));
        EXPECT_EQ(incident.endedAt, row.closesAs ? std::optional(at(9.0)) : std::nullopt);
        // Still open, the next hot sample adds to it; closed, it opens another.
        tracker.observe(hot(10.0), &node);
        EXPECT_EQ(tracker.incidents().size(), row.closesAs ? 2u : 1u);
    }
}

TEST(DashboardIncidentTracker, VerdictAfterIncidentAlreadyClosedChangesNothing)
{
    DashboardIncidentTracker tracker;
    const DashboardTask swift = makeTask("swift", 70.0);
    tracker.observe(hot(0.0), &swift);
    const SystemMetricSample actionSample = hot(2.0);
    tracker.recordAction(swift, std::nullopt, at(2.0), &actionSample);
    tracker.observe(calm(4.0), &swift); // cooled before the verdict

    const DashboardIncidentTracker closed = tracker;
    tracker.finishActiveIncident(DashboardRecoveryState::recovered, at(122.0));
    EXPECT_EQ(tracker, closed);
    EXPECT_EQ(tracker.incidents().front().status, Status::recoveredWithoutAction);
    EXPECT_EQ(tracker.incidents().front().action, QStringLiteral("结束 swift 任务"));
}

TEST(DashboardIncidentTracker, NewestFirstAfterTwoActions)
{
    DashboardIncidentTracker tracker;
    const SystemMetricSample first = calm(10.0);
    const SystemMetricSample second = calm(20.0);

    tracker.recordAction(makeTask("pytest", 5.0, TaskKind::test), std::nullopt, at(10.0), &first);
    // The ending failed: the incident closes at once, and the next action opens another.
    tracker.finishActiveIncident(DashboardRecoveryState::terminationFailed, at(11.0));
    tracker.recordAction(makeTask("webpack", 5.0, TaskKind::build), std::nullopt, at(20.0),
                         &second);

    ASSERT_EQ(tracker.incidents().size(), 2u);
    EXPECT_EQ(tracker.incidents()[0].application, "webpack");
    EXPECT_EQ(tracker.incidents()[0].action, QStringLiteral("结束 webpack 构建"));
    EXPECT_EQ(tracker.activeIncidentID(), tracker.incidents()[0].id);
    EXPECT_EQ(tracker.incidents()[1].application, "pytest");
    EXPECT_EQ(tracker.incidents()[1].status, Status::actionFailed);
    EXPECT_EQ(tracker.incidents()[1].endedAt, at(11.0));
}

} // namespace
