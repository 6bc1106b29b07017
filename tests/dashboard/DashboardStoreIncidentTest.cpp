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

// The tracker is handed the top live task; the list is published only when
// it changed; clearing drops even the active incident.
TEST(DashboardStoreIncidents, HotSamplesBlameTheTopTaskAndClearStartsAnew)
{
    auto store = makeStoreForTesting();
    QSignalSpy incidentsChanged(store.get(), &DashboardStore::incidentsChanged);
    store->ingest(tick(8.0, SystemThermalState::critical, 99.0, 100.0)); // nothing ranked
    EXPECT_TRUE(store->incidents().empty());
    EXPECT_EQ(incidentsChanged.count(), 0); // an equal list is not a change

    // A lineage already loaded on its first sample passes the warm-up gate at
    // once; the busier source of two is the one blamed.
    SystemMetricSample hot = tick(10.0, SystemThermalState::nominal, 82.0, 10.0);
    hot.processMetrics = {makeProcess(4000, 1, "sleep", 1.0), makeProcess(4100, 1, "cargo", 70.0),
                          makeProcess(4101, 4100, "rustc", 95.0)};
    store->ingest(hot);
    ASSERT_EQ(store->liveTasks().size(), 2u);
    ASSERT_EQ(store->incidents().size(), 1u);
    const DashboardIncident opened = store->incidents().front();
    EXPECT_EQ(opened.application, store->liveTasks().front().application);
    EXPECT_EQ(opened.peakCPU, store->liveTasks().front().cpu);
    EXPECT_EQ(incidentsChanged.count(), 1);

    store->clearIncidents();
    EXPECT_TRUE(store->incidents().empty());
    EXPECT_EQ(incidentsChanged.count(), 2);
    // Still hot: not a point of the dropped incident, but the start of a new one.
    hot.timestamp = secondsAt(12.0);
    store->ingest(hot);
    ASSERT_EQ(store->incidents().size(), 1u);
    EXPECT_NE(store->incidents().front().id, opened.id);
    EXPECT_EQ(store->incidents().front().points.size(), 1u);
}

} // namespace
