// Incident life cycles, driven as sequences of samples.

#include "dashboard/DashboardIncidentTracker.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <optional>

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
    const DashboardTask busier = makeTask("vite", 200.0);

    // System CPU 10 but the task's sum is 60: the opening peak takes the task;
    // afterwards only the system's figure raises it.
    tracker.observe(hot(98.0), nullptr); // hot, but nobody to blame: opens nothing
    tracker.observe(hot(100.0, 10.0, 80.0), &vite);
    ASSERT_EQ(tracker.incidents().size(), 1u);
    const DashboardIncident &opened = tracker.incidents().front();
    EXPECT_EQ(tracker.activeIncidentID(), opened.id);
    EXPECT_EQ(opened.startedAt, at(100.0));
    EXPECT_EQ(opened.detail, "vite detail");
    EXPECT_EQ(opened.peakCPU, 60.0);
    tracker.observe(hot(102.0, 50.0, 78.0), &busier);
    tracker.observe(makeSample({.time = 104.0, .thermal = Thermal::fair}), &busier);
    tracker.observe(hot(106.0, 55.0, 86.5), nullptr); // no task: goes on
    EXPECT_EQ(tracker.incidents().front().peakCPU, 60.0);
    tracker.observe(
        makeSample({.time = 108.0, .thermal = Thermal::fair, .cpu = 95.0, .temperature = 70.0}),
        nullptr);
    EXPECT_EQ(tracker.incidents().front().peakCPU, 95.0);
    EXPECT_EQ(tracker.incidents().front().peakTemperature, 86.5);

    // One calm sample closes it, and still leaves its point.
    tracker.observe(calm(110.0), &busier);
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
    EXPECT_EQ(tracker.activeIncidentID(), tracker.incidents()[0].id);
}

// Hot by thermal pressure alone: an unreadable CPU counts as 0 and the
// first temperature reading sets the peak.
TEST(DashboardIncidentTracker, OpensWithoutReadingsAndTakesTheFirstOnes)
{
    const DashboardTask idle = makeTask("idle", 0.0);
    DashboardIncidentTracker tracker;
    tracker.observe(makeSample({.time = 6.0, .thermal = Thermal::fair}), &idle);
    ASSERT_NE(tracker.activeIncident(), nullptr);
    EXPECT_EQ(tracker.activeIncident()->peakCPU, 0.0);
    EXPECT_EQ(tracker.activeIncident()->peakTemperature, std::nullopt);
    tracker.observe(makeSample({.time = 8.0, .thermal = Thermal::serious, .temperature = 72.0}),
                    &idle);
    EXPECT_EQ(tracker.activeIncident()->peakTemperature, 72.0);
}

// An action goes to the active incident (the last one wins), opens one with
// a sample when none is active, and without a sample does nothing; a verdict
// closes only the incident still active.
TEST(DashboardIncidentTracker, ActionsJoinTheActiveIncidentOrOpenTheirOwn)
{
    DashboardIncidentTracker tracker;
    const DashboardTask cargo = makeTask("cargo", 90.0, TaskKind::build);
    tracker.recordAction(cargo, std::nullopt, at(1.0), nullptr);
    EXPECT_EQ(tracker, DashboardIncidentTracker());

    tracker.observe(hot(2.0), &cargo);
    const SystemMetricSample later = hot(3.0);
    tracker.recordAction(cargo, QStringLiteral("rustc"), at(3.0), &later);
    tracker.recordAction(cargo, std::nullopt, at(7.0), &later);
    ASSERT_EQ(tracker.incidents().size(), 1u);
    EXPECT_EQ(tracker.incidents().front().action, QStringLiteral("结束 cargo 构建"));
    EXPECT_EQ(tracker.incidents().front().actionAt, at(7.0));
    EXPECT_EQ(tracker.incidents().front().points.size(), 1u); // an action adds no point
    // A placeholder in a process name is inserted as it stands.
    EXPECT_EQ(incidentActionText(cargo, QStringLiteral("a%1b")),
              QStringLiteral("结束 a%1b 子进程"));

    tracker.observe(calm(8.0), &cargo); // cooled before the verdict
    const DashboardIncidentTracker closed = tracker;
    tracker.finishActiveIncident(DashboardRecoveryState::recovered, at(122.0));
    tracker.recordAction(cargo, std::nullopt, at(123.0), nullptr);
    EXPECT_EQ(tracker, closed);

    const DashboardTask pytest = makeTask("pytest", 5.0, TaskKind::test);
    const SystemMetricSample quiet = calm(130.0);
    tracker.recordAction(pytest, std::nullopt, at(130.0), &quiet);
    ASSERT_EQ(tracker.incidents().size(), 2u); // newest first
    EXPECT_EQ(tracker.incidents()[0].application, "pytest");
    EXPECT_EQ(tracker.incidents()[0].status, Status::observing);
    EXPECT_EQ(tracker.activeIncidentID(), tracker.incidents()[0].id);
    EXPECT_EQ(tracker.incidents()[1], closed.incidents()[0]);
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

} // namespace
