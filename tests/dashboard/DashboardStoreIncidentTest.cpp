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
    SystemMetricSample sample = makeSample(time);
    sample.thermalState = thermal;
    if (temperature)
        sample.temperatureCelsius = SensorReading<double>::available(*temperature, "test");
    if (cpu)
        sample.cpuUsage = SensorReading<double>::available(*cpu, "test");
    return sample;
}

TEST(DashboardStoreMenuBar, AbnormalTimeStartsOnceAndClearsOnOneCalmSample)
{
    auto store = makeStoreForTesting();
    EXPECT_EQ(store->menuBarPresentation().state, State::collecting);
    EXPECT_EQ(store->menuBarAbnormalStartedAt(), std::nullopt);

    struct Step {
        SystemMetricSample sample;
        std::optional<double> expectedStart;
        State state;
        std::optional<QString> durationText;
    };
    const Step steps[] = {
        {tick(100.0, SystemThermalState::nominal, 50.0, 10.0), std::nullopt, State::normal,
         std::nullopt},
        {tick(102.0, SystemThermalState::nominal, 80.0, 40.0), 102.0, State::highLoad,
         QStringLiteral("刚刚出现")},
        // A move to the other abnormal state keeps the start.
        {tick(150.0, SystemThermalState::critical), 102.0, State::actionRecommended,
         QStringLiteral("刚刚出现")},
        {tick(162.0, SystemThermalState::fair, 60.0), 102.0, State::highLoad,
         QStringLiteral("已持续 1 分钟")},
        {tick(222.0, SystemThermalState::nominal, 95.0, 0.0), 102.0, State::actionRecommended,
         QStringLiteral("已持续 2 分钟")},
        // `unknown` is calm for the menu bar: the episode ends.
        {tick(224.0, SystemThermalState::unknown, 60.0, 0.0), std::nullopt, State::observing,
         std::nullopt},
        {tick(226.0, SystemThermalState::serious), 226.0, State::actionRecommended,
         QStringLiteral("刚刚出现")},
    };
    for (const Step &step : steps) {
        SCOPED_TRACE(step.sample.timestamp.secondsSince1970);
        store->ingest(step.sample);
        const std::optional<TimePoint> expected =
            step.expectedStart ? std::optional(TimePoint::fromSecondsSince1970(*step.expectedStart))
                               : std::nullopt;
        EXPECT_EQ(store->menuBarAbnormalStartedAt(), expected);
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
}

TEST(DashboardStoreIncidents, ClearingAnEmptyLogNotifiesNothing)
{
    auto store = makeStoreForTesting();
    store->ingest(tick(10.0, SystemThermalState::fair, 60.0, 20.0));
    QSignalSpy changed(store.get(), &DashboardStore::changed);
    store->clearIncidents();
    EXPECT_TRUE(store->incidents().empty());
    EXPECT_EQ(changed.count(), 0);
}

} // namespace
