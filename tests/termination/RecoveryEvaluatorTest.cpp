#include "termination/RecoveryEvaluator.h"

#include "support/RowName.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

namespace {

using State = DashboardRecoveryState;

constexpr double kStart = 10'000.0;

// A reading per metric: a number is `available`, nothing is unsupported.
struct Readings {
    std::optional<double> cpu;
    std::optional<double> temperature;
    std::optional<double> fan;
};

SystemMetricSample sampleAt(double seconds, const Readings &r)
{
    return makeSample({.time = seconds, .cpu = r.cpu, .temperature = r.temperature, .fan = r.fan});
}

struct VerdictCase {
    const char *name;
    Readings baseline;
    Readings latest;
    double elapsed;
    State expected;
};

using rows::PrintTo;

class RecoveryVerdict : public ::testing::TestWithParam<VerdictCase> {};

TEST_P(RecoveryVerdict, ComparesWithTheBaselineOnceTheWindowHasPassed)
{
    const VerdictCase &row = GetParam();
    const RecoveryEvaluator evaluator{sampleAt(kStart, row.baseline),
                                      TimePoint::fromSecondsSince1970(kStart), 120.0};
    EXPECT_EQ(evaluator.evaluate(sampleAt(kStart + row.elapsed, row.latest)), row.expected);
}

using V = VerdictCase;
const VerdictCase kVerdicts[] = {
    // The window: a sample exactly at its end is judged, one before is not.
    V{"JustBeforeTheWindowEnds", {90, {}, {}}, {10, {}, {}}, 119.999, State::recovering},
    V{"ExactlyAtTheWindowEnd", {90, {}, {}}, {10, {}, {}}, 120.0, State::recovered},
    V{"NoSensorsBeforeTheWindowEnds", {}, {}, 60.0, State::recovering},
    // CPU: the larger of 10 points and a fifth of the baseline.
    V{"CPUDropOfAFifthAboveFifty", {60, {}, {}}, {48, {}, {}}, 120.0, State::recovered},
    V{"CPUDropJustShortOfAFifth", {60, {}, {}}, {48.1, {}, {}}, 120.0, State::noImprovement},
    V{"CPUDropBelowTenPointsOverAFifth", {30, {}, {}}, {21, {}, {}}, 120.0, State::noImprovement},
    V{"CPUDropOfTenPointsBelowFifty", {30, {}, {}}, {20, {}, {}}, 120.0, State::recovered},
    // Temperature: 2 degrees.
    V{"TemperatureDropOfTwo", {{}, 80, {}}, {{}, 78, {}}, 120.0, State::recovered},
    V{"TemperatureDropOfOneAndAHalf", {{}, 80, {}}, {{}, 78.5, {}}, 120.0, State::noImprovement},
    // Fan: a tenth of a turning fan.
    V{"FanDropOfATenth", {{}, {}, 3000}, {{}, {}, 2700}, 120.0, State::recovered},
    V{"StoppedFanStaysStopped", {{}, {}, 0}, {{}, {}, 0}, 120.0, State::noImprovement},
    V{"OnlyFanPairedAndNotFalling", {90, {}, 3000}, {{}, {}, 3000}, 120.0, State::noImprovement},
    // Pairs: both ends available, or the metric takes no part.
    V{"NoPairAnywhere", {90, {}, 3000}, {{}, 70, {}}, 120.0, State::insufficientData},
    V{"NothingAvailable", {}, {}, 300.0, State::insufficientData},
    // One improvement is enough, whatever the others did.
    V{"CPURoseButTemperatureFell", {20, 80, {}}, {60, 78, {}}, 120.0, State::recovered},
    V{"EverythingRose", {20, 70, 2000}, {30, 75, 2500}, 120.0, State::noImprovement},
};

INSTANTIATE_TEST_SUITE_P(Rows, RecoveryVerdict, ::testing::ValuesIn(kVerdicts), RowName());

// Only CPU, temperature and fan take part, and only when available.
TEST(RecoveryVerdict, IgnoresOtherReadingsAndTakesOnlyAvailableOnes)
{
    SystemMetricSample baseline = sampleAt(kStart, {50, 70, {}});
    baseline.thermalState = SystemThermalState::critical;
    baseline.gpuUsage = SensorReading<double>::available(99.0, QStringLiteral("test"));
    SystemMetricSample latest = sampleAt(kStart + 120.0, {50, 70, {}});
    latest.gpuUsage = SensorReading<double>::available(1.0, QStringLiteral("test"));
    const RecoveryEvaluator evaluator{baseline, baseline.timestamp, 120.0};
    EXPECT_EQ(evaluator.evaluate(latest), State::noImprovement);

    latest.temperatureCelsius = SensorReading<double>::warmingUp();
    latest.cpuUsage = SensorReading<double>::permissionDenied(QStringLiteral("denied"));
    EXPECT_EQ(evaluator.evaluate(latest), State::insufficientData);
}

} // namespace
