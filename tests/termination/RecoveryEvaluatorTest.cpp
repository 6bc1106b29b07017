#include "termination/RecoveryEvaluator.h"

#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using State = DashboardRecoveryState;

constexpr double kStart = 10'000.0;

// "cpu,temperature,fan": a number is `available`, nothing is unsupported.
SystemMetricSample sampleAt(double seconds, const QString &readings)
{
    const QStringList fields = readings.split(u',');
    const auto figure = [&](int index) {
        bool ok = false;
        const double value = fields.value(index).toDouble(&ok);
        return ok ? std::optional(value) : std::nullopt;
    };
    return makeSample(
        {.time = seconds, .cpu = figure(0), .temperature = figure(1), .fan = figure(2)});
}

TEST(RecoveryVerdict, ComparesWithTheBaselineOnceTheWindowHasPassed)
{
    const std::map<QString, State> states = {{"recovering", State::recovering},
                                             {"recovered", State::recovered},
                                             {"noImprovement", State::noImprovement},
                                             {"insufficientData", State::insufficientData}};
    for (const FixtureRow &row : fixtureTable(QStringLiteral("recovery-verdicts"))) {
        const RecoveryEvaluator evaluator{sampleAt(kStart, *row.text(2)),
                                          TimePoint::fromSecondsSince1970(kStart), 120.0};
        EXPECT_EQ(evaluator.evaluate(sampleAt(kStart + row.text(1)->toDouble(), *row.text(3))),
                  states.at(*row.text(0)))
            << row.where;
    }
}

// Only CPU, temperature and fan take part, and only when available.
TEST(RecoveryVerdict, IgnoresOtherReadingsAndTakesOnlyAvailableOnes)
{
    SystemMetricSample baseline = sampleAt(kStart, "50,70,");
    baseline.thermalState = SystemThermalState::critical;
    baseline.gpuUsage = SensorReading<double>::available(99.0, QStringLiteral("test"));
    SystemMetricSample latest = sampleAt(kStart + 120.0, "50,70,");
    latest.gpuUsage = SensorReading<double>::available(1.0, QStringLiteral("test"));
    const RecoveryEvaluator evaluator{baseline, baseline.timestamp, 120.0};
    EXPECT_EQ(evaluator.evaluate(latest), State::noImprovement);

    latest.temperatureCelsius = SensorReading<double>::warmingUp();
    latest.cpuUsage = SensorReading<double>::permissionDenied(QStringLiteral("denied"));
    EXPECT_EQ(evaluator.evaluate(latest), State::insufficientData);
}

} // namespace
