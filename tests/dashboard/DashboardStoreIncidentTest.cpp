// The store's side of incidents and the menu bar: the abnormal time kept
// across ingests, the published incident list, and the clear.

#include "support/StoreTesting.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <optional>

namespace {

using State = MenuBarPresentationState;

SystemMetricSample tick(double time, SystemThermalState thermal,
                        std::optional<double> temperature = std::nullopt,
                        std::optional<double> cpu = std::nullopt)
{
    return makeSample({.time = time, .thermal = thermal, .cpu = cpu, .temperature = temperature});
}

TEST(DashboardStoreMenuBar, AbnormalTimeStartsOnceAndClearsOnOneCalmSample)
{
    auto store = makeStoreForTesting();
    EXPECT_EQ(store->menuBarPresentation().state, State::collecting);

    struct Step {
        SystemMetricSample sample;
        State state;
        std::optional<QString> durationText;
    };
    using T = SystemThermalState;
    constexpr std::nullopt_t no = std::nullopt;
    constexpr State act = State::actionRecommended, high = State::highLoad;
    const QString justNow = QStringLiteral("刚刚出现");
    // clang-format off
    const Step steps[] = {
        {tick(100.0, T::nominal, 50.0, 10.0), State::normal, no},
        {tick(102.0, T::nominal, 80.0, 40.0), high, justNow},
        // A move to the other abnormal state keeps the start.
        {tick(150.0, T::critical), act, justNow},
        {tick(162.0, T::fair, 60.0), high, QStringLiteral("已持续 1 分钟")},
        {tick(222.0, T::nominal, 95.0, 0.0), act, QStringLiteral("已持续 2 分钟")},
        // `unknown` is calm for the menu bar: the episode ends.
        {tick(224.0, T::unknown, 60.0, 0.0), State::observing, no},
        {tick(226.0, T::serious), act, justNow},
    };
    // clang-format on
    for (const Step &step : steps) {
        SCOPED_TRACE(step.sample.timestamp.secondsSince1970);
        store->ingest(step.sample);
        const MenuBarPresentation presentation = store->menuBarPresentation();
        EXPECT_EQ(presentation.state, step.state);
        EXPECT_EQ(presentation.durationText, step.durationText);
    }
}

TEST(DashboardStoreIncidents, HotMachineWithoutTasksOpensNoIncident)
{
    auto store = makeStoreForTesting();
    QSignalSpy incidentsChanged(store.get(), &DashboardStore::incidentsChanged);
    QSignalSpy changed(store.get(), &DashboardStore::changed);

    // Hot by pressure and by temperature with load, but nothing of the user's
    // is ranked: there is no task to blame.
    store->ingest(tick(10.0, SystemThermalState::fair, 60.0, 20.0));
    store->ingest(tick(12.0, SystemThermalState::nominal, 85.0, 95.0));
    store->ingest(tick(14.0, SystemThermalState::critical, 99.0, 100.0));

    EXPECT_TRUE(store->liveTasks().empty());
    EXPECT_TRUE(store->incidents().empty());
    EXPECT_EQ(incidentsChanged.count(), 0); // an equal list is not a change
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(store->menuBarPresentation().primaryTask, std::nullopt);
    store->clearIncidents(); // an empty log: nothing to tell
    EXPECT_EQ(changed.count(), 3);
}

TEST(DashboardStoreIncidents, HotSampleWithRankedProcessesOpensAnIncidentUntilACalmOne)
{
    auto store = makeStoreForTesting();
    QSignalSpy incidentsChanged(store.get(), &DashboardStore::incidentsChanged);

    // A lineage already loaded on its first sample passes the warm-up gate at
    // once; the busier source of two is the one blamed.
    const QList<ProcessMetric> busy = {makeProcess(4000, 1, "sleep", 1.0),
                                       makeProcess(4100, 1, "cargo", 70.0),
                                       makeProcess(4101, 4100, "rustc", 95.0)};
    SystemMetricSample hot = tick(10.0, SystemThermalState::nominal, 82.0, 10.0);
    hot.processMetrics = busy;
    store->ingest(hot);

    ASSERT_EQ(store->liveTasks().size(), 2u);
    const DashboardTask &top = store->liveTasks().front();
    EXPECT_EQ(top.targetProcess.name, QStringLiteral("rustc"));
    ASSERT_EQ(store->incidents().size(), 1u);
    const DashboardIncident &opened = store->incidents().front();
    EXPECT_EQ(opened.application, top.application);
    EXPECT_EQ(opened.status, DashboardIncidentStatus::observing);
    EXPECT_EQ(opened.peakCPU, top.cpu); // the source's sum, above the system's 10 %
    EXPECT_EQ(incidentsChanged.count(), 1);
    EXPECT_EQ(store->menuBarPresentation().state, State::highLoad);

    SystemMetricSample calm = tick(12.0, SystemThermalState::nominal, 60.0, 10.0);
    calm.processMetrics = busy;
    store->ingest(calm);
    ASSERT_EQ(store->incidents().size(), 1u);
    EXPECT_EQ(store->incidents().front().status, DashboardIncidentStatus::recoveredWithoutAction);
    EXPECT_EQ(store->incidents().front().endedAt, TimePoint::fromSecondsSince1970(12.0));
    EXPECT_EQ(incidentsChanged.count(), 2);

    store->clearIncidents();
    EXPECT_TRUE(store->incidents().empty());
    EXPECT_EQ(incidentsChanged.count(), 3);
}

TEST(DashboardStoreIncidents, ClearWhileActiveDropsTheIncidentAndTheNextHotSampleStartsAnew)
{
    auto store = makeStoreForTesting();
    const QList<ProcessMetric> busy = {makeProcess(4200, 1, "docker", 80.0)};
    SystemMetricSample hot = tick(10.0, SystemThermalState::nominal, 85.0, 10.0);
    hot.processMetrics = busy;
    store->ingest(hot);
    ASSERT_EQ(store->incidents().size(), 1u);
    const QUuid dropped = store->incidents().front().id;

    store->clearIncidents();
    EXPECT_TRUE(store->incidents().empty());

    // Still hot: not a point of the dropped incident, but the start of a new one.
    hot.timestamp = TimePoint::fromSecondsSince1970(12.0);
    store->ingest(hot);
    ASSERT_EQ(store->incidents().size(), 1u);
    EXPECT_NE(store->incidents().front().id, dropped);
    EXPECT_EQ(store->incidents().front().startedAt, TimePoint::fromSecondsSince1970(12.0));
    EXPECT_EQ(store->incidents().front().points.size(), 1u);
}

} // namespace
