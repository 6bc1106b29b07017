// The heat test of the incident log and the menu bar's state decision: their
// boundaries, and that the two agree on every sample.

#include "dashboard/HeatTest.h"
#include "dashboard/MenuBarPresentation.h"
#include "support/RowName.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using State = MenuBarPresentationState;
using Thermal = SystemThermalState;

struct HeatRow {
    const char *name;
    Thermal thermal;
    std::optional<double> temperature; // absent: not readable
    std::optional<double> systemCPU;   // absent: not readable
    std::optional<double> taskCPU;     // absent: no task
    bool hot;
    State state;
};

const HeatRow kHeatRows[] = {
    // The system's own pressure is enough by itself.
    {"fairCoolIdle", Thermal::fair, 40.0, 0.0, std::nullopt, true, State::highLoad},
    {"fairNoReadings", Thermal::fair, std::nullopt, std::nullopt, std::nullopt, true,
     State::highLoad},
    {"seriousCoolIdle", Thermal::serious, 40.0, 0.0, std::nullopt, true, State::actionRecommended},
    {"criticalNoReadings", Thermal::critical, std::nullopt, std::nullopt, std::nullopt, true,
     State::actionRecommended},
    // Temperature and load together, both inclusive.
    {"atBothThresholds", Thermal::nominal, 75.0, 30.0, std::nullopt, true, State::highLoad},
    {"temperatureJustBelow", Thermal::nominal, 74.9, 30.0, std::nullopt, false, State::normal},
    {"cpuJustBelow", Thermal::nominal, 75.0, 29.9, std::nullopt, false, State::normal},
    {"taskCarriesTheLoad", Thermal::nominal, 75.0, 10.0, 30.0, true, State::highLoad},
    {"taskJustBelow", Thermal::nominal, 75.0, 10.0, 29.9, false, State::normal},
    {"taskAboveSystem", Thermal::nominal, 80.0, 10.0, 120.0, true, State::highLoad},
    {"systemAboveTask", Thermal::nominal, 80.0, 50.0, 1.0, true, State::highLoad},
    {"noTaskCpuUnreadable", Thermal::nominal, 80.0, std::nullopt, std::nullopt, false,
     State::normal},
    {"cpuUnreadableTaskLoaded", Thermal::nominal, 80.0, std::nullopt, 45.0, true, State::highLoad},
    // An unreadable temperature never makes a sample hot.
    {"noTemperatureFullLoad", Thermal::nominal, std::nullopt, 100.0, 100.0, false, State::normal},
    // `unknown` is no pressure: it falls through to the readings.
    {"unknownHotLoaded", Thermal::unknown, 90.0, 50.0, std::nullopt, true,
     State::actionRecommended},
    {"unknownWarmLoaded", Thermal::unknown, 80.0, 50.0, std::nullopt, true, State::highLoad},
    {"unknownCool", Thermal::unknown, 40.0, 90.0, std::nullopt, false, State::observing},
    {"unknownNoReadings", Thermal::unknown, std::nullopt, std::nullopt, std::nullopt, false,
     State::observing},
    // 90 degrees recommends action without load, yet opens no incident.
    {"ninetyIdle", Thermal::nominal, 90.0, 0.0, std::nullopt, false, State::actionRecommended},
    {"justBelowNinetyIdle", Thermal::nominal, 89.9, 0.0, std::nullopt, false, State::normal},
    {"justBelowNinetyLoaded", Thermal::nominal, 89.9, 30.0, std::nullopt, true, State::highLoad},
    {"nominalCool", Thermal::nominal, 40.0, 95.0, 95.0, false, State::normal},
};

using rows::PrintTo;

class HeatDecision : public testing::TestWithParam<HeatRow> {};

TEST_P(HeatDecision, HotTestAndMenuBarStateAtTheirBoundaries)
{
    const HeatRow &row = GetParam();
    const SystemMetricSample sample =
        makeSample({.thermal = row.thermal, .cpu = row.systemCPU, .temperature = row.temperature});
    EXPECT_EQ(isSampleHot(sample, row.taskCPU), row.hot);
    EXPECT_EQ(menuBarState(&sample, row.taskCPU), row.state)
        << menuBarPresentationStateName(menuBarState(&sample, row.taskCPU)).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Rows, HeatDecision, testing::ValuesIn(kHeatRows), RowName());

TEST(HeatDecision, NoSampleIsCollecting)
{
    EXPECT_EQ(menuBarState(nullptr, std::nullopt), State::collecting);
    EXPECT_EQ(menuBarState(nullptr, 500.0), State::collecting);
}

} // namespace
