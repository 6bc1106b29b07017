// The menu bar's presentation: the heat test it shares with the incident
// log, titles per state, metrics, the task to name, and the texts that depend
// on the user's locale.

#include "dashboard/MenuBarPresentation.h"
#include "dashboard/HeatTest.h"
#include "support/RowName.h"
#include "support/StoreTesting.h"

#include <QLocale>
#include <QSet>

#include <gtest/gtest.h>

#include <optional>

namespace {

using State = MenuBarPresentationState;
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
    struct Row {
        double value;
        const char *text;
    };
    // clang-format off
    const Row rows[] = {
        {74.96, "74.9"}, {74.99, "74.9"}, // cut, not rounded up
        {74.0, "74"}, {74.04, "74"}, // a whole cut drops the fraction
        {74.5, "74.5"}, {75.0, "75"}, {75.4, "75"},
        {73.6, "74"}, // below the band: ordinary rounding
        {89.96, "89.9"}, {89.0, "89"}, {90.0, "90"},
        {90.4, "90"}, {40.0, "40"}, {-3.0, "-3"},
        {1234.0, "1,234"}, // the interface's grouping, whatever the locale
    };
    // clang-format on
    for (const Row &row : rows) {
        SCOPED_TRACE(row.value);
        for (const QLocale &locale : {QLocale::c(), german}) {
            ScopedDefaultLocale scope(locale);
            EXPECT_EQ(formatTemperature(row.value), QString::fromUtf8(row.text));
        }
    }
}

TEST(MenuBarDurationText, CountsWholeMinutesFromSixtySeconds)
{
    const char *justNow = "刚刚出现";
    const std::pair<std::optional<double>, const char *> rows[] = {
        {std::nullopt, justNow}, // no start time
        {0.0, justNow},
        {59.9, justNow},
        {60.0, "已持续 1 分钟"},
        {119.9, "已持续 1 分钟"},
        {120.0, "已持续 2 分钟"},
        {-5.0, justNow},                 // a start after the sample
        {60'000.0, "已持续 1,000 分钟"}, // the interface's grouping
    };
    const double sampleTime = 1'700'000'000.0;
    const SystemMetricSample hot = sampleWith(sampleTime, Thermal::fair, 40.0);
    ScopedDefaultLocale scope(german);
    for (const auto &[secondsBefore, text] : rows) {
        std::optional<TimePoint> start;
        if (secondsBefore)
            start = TimePoint::fromSecondsSince1970(sampleTime - *secondsBefore);
        EXPECT_EQ(makePresentation(&hot, {}, start).durationText, QString::fromUtf8(text))
            << secondsBefore.value_or(-1.0);
    }
}

constexpr auto N = Thermal::nominal, F = Thermal::fair, S = Thermal::serious, C = Thermal::critical,
               U = Thermal::unknown;
constexpr std::nullopt_t none = std::nullopt;
constexpr auto highLoad = State::highLoad, act = State::actionRecommended, normal = State::normal,
               observing = State::observing;

// Every state has its row: a unique name, words, a symbol, a message exactly
// when calm, and a spoken form around the title.
TEST(MenuBarStateInfo, EveryStateHasACompleteRow)
{
    QSet<QString> names;
    for (const State state : {State::collecting, observing, normal, highLoad, act}) {
        const MenuBarStateInfo &info = menuBarStateInfo(state);
        SCOPED_TRACE(info.name);
        EXPECT_EQ(info.key, state);
        names << QString::fromLatin1(info.name);
        for (const char *text : {info.name, info.title, info.headline, info.symbolName})
            EXPECT_TRUE(text && *text);
        EXPECT_EQ(info.message != nullptr, !isAbnormalMenuBarState(state));
        EXPECT_TRUE(QString::fromUtf8(info.spokenTitle).contains(QLatin1String("%1")));
    }
    EXPECT_EQ(names.size(), 5);
    EXPECT_EQ(menuBarState(nullptr, 500.0), State::collecting);
}

// The title: the state's word, the temperature alone when normal, both
// otherwise.
TEST(MenuBarPresentation, MenuTitleJoinsTheStateAndTheTemperature)
{
    struct Row {
        Thermal thermal;
        std::optional<double> temperature;
        State state;
        const char *menuTitle;
    };
    const Row rows[] = {
        {F, 40.0, highLoad, "负载高 · 40°"}, {C, none, act, "建议处理"},
        {N, 89.96, normal, "89.9°"},         {U, 40.0, observing, "观察中 · 40°"},
        {U, none, observing, "观察中"},      {N, none, normal, "正常"},
    };
    ScopedDefaultLocale scope(QLocale::c());
    for (const Row &row : rows) {
        const SystemMetricSample sample = sampleWith(500.0, row.thermal, row.temperature, 10.0);
        const MenuBarPresentation presentation = makePresentation(&sample, {}, std::nullopt);
        ASSERT_EQ(presentation.state, row.state) << row.menuTitle;
        EXPECT_EQ(presentation.menuTitle, QString::fromUtf8(row.menuTitle));
        const MenuBarStateInfo &info = menuBarStateInfo(row.state);
        EXPECT_EQ(presentation.headline, QString::fromUtf8(info.headline));
        EXPECT_EQ(presentation.symbolName, QString::fromLatin1(info.symbolName));
    }
}

TEST(MenuBarPresentation, MetricValuesPerReadingCase)
{
    using Reading = SensorReading<double>;
    struct Row {
        const char *name;
        Reading cpu;
        Reading temperature;
        Reading fan;
        const char *cpuValue;
        const char *temperatureValue;
        const char *fanValue;
        std::optional<QString> spoken; // the same for all three in each row
    };
    const Reading denied = Reading::permissionDenied("x"), unsupported = Reading::unsupported("x"),
                  warming = Reading::warmingUp();
    const Row rows[] = {
        {"available", Reading::available(42.4, "t"), Reading::available(74.96, "t"),
         Reading::available(1234.6, "t"), "42%", "74.9°C", "1,235 RPM", std::nullopt},
        {"denied", denied, denied, denied, "受限", "受限", "受限", QStringLiteral("权限受限")},
        {"unsupported", unsupported, unsupported, unsupported, "不可用", "不可用", "不可用", {}},
        {"warmingUp", warming, warming, warming, "采集中", "采集中", "采集中", std::nullopt},
    };
    ScopedDefaultLocale scope(QLocale::c());
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        SystemMetricSample sample = makeSample(10.0);
        sample.cpuUsage = row.cpu;
        sample.temperatureCelsius = row.temperature;
        sample.fanRPM = row.fan;
        const MenuBarPresentation presentation = makePresentation(&sample, {}, std::nullopt);
        EXPECT_EQ(presentation.cpu.value, QString::fromUtf8(row.cpuValue));
        EXPECT_EQ(presentation.temperature.value, QString::fromUtf8(row.temperatureValue));
        EXPECT_EQ(presentation.fan.value, QString::fromUtf8(row.fanValue));
        EXPECT_EQ(presentation.cpu.accessibilityValue, row.spoken);
        EXPECT_EQ(presentation.temperature.accessibilityValue, row.spoken);
        EXPECT_EQ(presentation.fan.accessibilityValue, row.spoken);
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

using rows::PrintTo;

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
    {"fairCoolIdle", F, 40.0, 0.0, none, true, highLoad},
    {"fairNoReadings", F, none, none, none, true, highLoad},
    {"seriousCoolIdle", S, 40.0, 0.0, none, true, act},
    {"criticalNoReadings", C, none, none, none, true, act},
    // Temperature and load together, both inclusive.
    {"atBothThresholds", N, 75.0, 30.0, none, true, highLoad},
    {"temperatureJustBelow", N, 74.9, 30.0, none, false, normal},
    {"cpuJustBelow", N, 75.0, 29.9, none, false, normal},
    {"taskCarriesTheLoad", N, 75.0, 10.0, 30.0, true, highLoad},
    {"taskJustBelow", N, 75.0, 10.0, 29.9, false, normal},
    {"taskAboveSystem", N, 80.0, 10.0, 120.0, true, highLoad},
    {"systemAboveTask", N, 80.0, 50.0, 1.0, true, highLoad},
    {"noTaskCpuUnreadable", N, 80.0, none, none, false, normal},
    {"cpuUnreadableTaskLoaded", N, 80.0, none, 45.0, true, highLoad},
    // An unreadable temperature never makes a sample hot.
    {"noTemperatureFullLoad", N, none, 100.0, 100.0, false, normal},
    // `unknown` is no pressure: it falls through to the readings.
    {"unknownHotLoaded", U, 90.0, 50.0, none, true, act},
    {"unknownWarmLoaded", U, 80.0, 50.0, none, true, highLoad},
    {"unknownCool", U, 40.0, 90.0, none, false, observing},
    {"unknownNoReadings", U, none, none, none, false, observing},
    // 90 degrees recommends action without load, yet opens no incident.
    {"ninetyIdle", N, 90.0, 0.0, none, false, act},
    {"justBelowNinetyIdle", N, 89.9, 0.0, none, false, normal},
    {"justBelowNinetyLoaded", N, 89.9, 30.0, none, true, highLoad},
    {"nominalCool", N, 40.0, 95.0, 95.0, false, normal},
};

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

} // namespace
