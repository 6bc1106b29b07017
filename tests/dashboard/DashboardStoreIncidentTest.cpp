// The store's side of the menu bar: the abnormal time kept across ingests.

#include "support/StoreTesting.h"

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

} // namespace
