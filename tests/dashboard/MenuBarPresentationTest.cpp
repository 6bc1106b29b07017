// The menu bar's presentation: the heat test it shares with the incident
// log, titles per state, metrics, the task to name, and the texts that depend
// on the user's locale.

#include "dashboard/MenuBarPresentation.h"
#include "dashboard/HeatTest.h"
#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <optional>

namespace {

using Thermal = SystemThermalState;

const QLocale german(QLocale::German, QLocale::Germany);

SystemMetricSample sampleWith(double time, Thermal thermal, std::optional<double> temperature,
                              std::optional<double> cpu = std::nullopt)
{
    return makeSample({.time = time, .thermal = thermal, .cpu = cpu, .temperature = temperature});
}

DashboardTask task(const QString &application, double cpu, ResourceImpact energy)
{
    return makeTask(application, cpu, TaskKind::unknown, energy);
}

TEST(FormatTemperature, NeverRoundsUpToAThresholdInAnyLocale)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("menu-bar-temperatures"))) {
        for (const QLocale &locale : {QLocale::c(), german}) {
            ScopedDefaultLocale scope(locale);
            EXPECT_EQ(formatTemperature(row.fields[0].toDouble()), *row.text(1)) << row.where;
        }
    }
}

TEST(MenuBarDurationText, CountsWholeMinutesFromSixtySeconds)
{
    const double sampleTime = 1'700'000'000.0;
    const SystemMetricSample hot = sampleWith(sampleTime, Thermal::fair, 40.0);
    ScopedDefaultLocale scope(german);
    for (const FixtureRow &row : fixtureTable(QStringLiteral("menu-bar-durations"))) {
        std::optional<TimePoint> start;
        if (row.fields[0] != "-")
            start = TimePoint::fromSecondsSince1970(sampleTime - row.fields[0].toDouble());
        EXPECT_EQ(makePresentation(&hot, {}, start).durationText, *row.text(1)) << row.where;
    }
}

constexpr auto N = Thermal::nominal, F = Thermal::fair, S = Thermal::serious, C = Thermal::critical,
               U = Thermal::unknown;

TEST(MenuBarPresentation, MetricValuesPerReadingCase)
{
    using Reading = SensorReading<double>;
    ScopedDefaultLocale scope(QLocale::c());
    for (const FixtureRow &row : fixtureTable(QStringLiteral("menu-bar-metric-values"))) {
        const auto reading = [&](std::size_t index) {
            const QByteArray &kind = row.fields[0];
            return kind == "available"     ? Reading::available(row.fields[index].toDouble(), "t")
                   : kind == "denied"      ? Reading::permissionDenied("x")
                   : kind == "unsupported" ? Reading::unsupported("x")
                                           : Reading::warmingUp();
        };
        SystemMetricSample sample = makeSample(10.0);
        sample.cpuUsage = reading(1);
        sample.temperatureCelsius = reading(2);
        sample.fanRPM = reading(3);
        const MenuBarPresentation presentation = makePresentation(&sample, {}, std::nullopt);
        const std::optional<QString> spoken = row.fields[7] == "-" ? std::nullopt : row.text(7);
        int index = 4;
        for (const auto &metric : {presentation.cpu, presentation.temperature, presentation.fan}) {
            EXPECT_EQ(metric.value, *row.text(index++)) << row.where;
            EXPECT_EQ(metric.accessibilityValue, spoken) << row.where;
        }
    }
}

TEST(MenuBarPresentation, NamesFirstTaskNeedingAttentionOnlyWhenAbnormal)
{
    const SystemMetricSample hot = sampleWith(10.0, Thermal::fair, 70.0, 50.0);
    const SystemMetricSample calm = sampleWith(10.0, Thermal::nominal, 50.0, 10.0);
    const std::vector<DashboardTask> mixed = {
        task("quiet", 1.0, ResourceImpact::low),    task("cargo", 1234.4, ResourceImpact::high),
        task("idle", 0.0, ResourceImpact::low),     task("vite", 40.0, ResourceImpact::medium),
        task("other", 0.5, ResourceImpact::low), // beyond the four live tasks from here
        task("docker", 35.0, ResourceImpact::high),
    };
    const std::vector<DashboardTask> allLow = {task("quiet", 1.0, ResourceImpact::low),
                                               task("idle", 0.0, ResourceImpact::low)};
    struct Row {
        const char *name;
        const SystemMetricSample *sample;
        const std::vector<DashboardTask> *tasks;
        std::optional<MenuBarPresentationTask> primary;
        qint64 remaining;
    };
    // The CPU in the interface's grouping, whatever the user's locale.
    const MenuBarPresentationTask cargo{QStringLiteral("cargo"), QStringLiteral("1,234%"),
                                        QStringLiteral("3 分钟")};
    const Row rows[] = {
        {"threeNeedAttention", &hot, &mixed, cargo, 2},
        {"noneNeedsAttention", &hot, &allLow, std::nullopt, 0},
        {"calmNamesNobody", &calm, &mixed, std::nullopt, 0},
        {"noTasks", &hot, nullptr, std::nullopt, 0},
    };
    ScopedDefaultLocale scope(german);
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const MenuBarPresentation presentation = makePresentation(
            row.sample, row.tasks ? *row.tasks : std::vector<DashboardTask>{}, std::nullopt);
        EXPECT_EQ(presentation.primaryTask, row.primary);
        EXPECT_EQ(presentation.remainingAttentionTaskCount, row.remaining);
    }
}

// Reads a figure of a table row: "-" is none.
std::optional<double> figure(const FixtureRow &row, std::size_t index)
{
    return row.fields.at(index) == "-" ? std::nullopt
                                       : std::optional(row.fields.at(index).toDouble());
}

// The heat test and the menu bar at their boundaries: the state and its
// title (the state's word, the temperature alone when normal, both otherwise).
TEST(HeatDecision, HotTestAndMenuBarStateAtTheirBoundaries)
{
    ScopedDefaultLocale scope(german);
    for (const FixtureRow &row : fixtureTable(QStringLiteral("menu-bar-heat-decisions"))) {
        std::optional<Thermal> thermal;
        for (const Thermal candidate : {N, F, S, C, U}) {
            if (systemThermalStateRawText(candidate) == *row.text(0))
                thermal = candidate;
        }
        ASSERT_TRUE(thermal) << row.where;
        const SystemMetricSample sample =
            makeSample({.thermal = *thermal, .cpu = figure(row, 2), .temperature = figure(row, 1)});
        std::vector<DashboardTask> tasks;
        if (const std::optional<double> taskCPU = figure(row, 3))
            tasks.push_back(task("first", *taskCPU, ResourceImpact::low));
        EXPECT_EQ(isSampleHot(sample, figure(row, 3)), row.fields[4] == "1") << row.where;
        const MenuBarPresentation presentation = makePresentation(&sample, tasks, std::nullopt);
        EXPECT_EQ(menuBarPresentationStateName(presentation.state), *row.text(5)) << row.where;
        EXPECT_EQ(presentation.menuTitle, *row.text(6)) << row.where;
        const MenuBarStateInfo &info = menuBarStateInfo(presentation.state);
        EXPECT_EQ(presentation.headline, QString::fromUtf8(info.headline)) << row.where;
        EXPECT_EQ(presentation.symbolName, QString::fromLatin1(info.symbolName)) << row.where;
    }
}

} // namespace
