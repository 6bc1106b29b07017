#include "process/ProcessMetricsProbe.h"

#include "support/RowName.h"

#include <gtest/gtest.h>

#include <deque>
#include <ostream>

namespace {

constexpr std::uint64_t second = 1000000000ULL;

// Hands out one prepared list per call and records the times it was given.
class ScriptedReader final : public RawProcessMetricReading {
public:
    explicit ScriptedReader(std::deque<std::vector<RawProcessMetric>> ticks)
        : m_ticks(std::move(ticks))
    {
    }
    std::vector<RawProcessMetric> readMetrics(TimePoint now) override
    {
        times.push_back(now);
        if (m_ticks.empty())
            return {};
        std::vector<RawProcessMetric> tick = std::move(m_ticks.front());
        m_ticks.pop_front();
        return tick;
    }
    std::vector<TimePoint> times;

private:
    std::deque<std::vector<RawProcessMetric>> m_ticks;
};

RawProcessMetric process(pid_t pid, double startTime, std::uint64_t cpuNanoseconds,
                         std::uint64_t diskBytes, const QString &executable = "/usr/bin/node")
{
    RawProcessMetric raw;
    raw.identity = {pid, TimePoint::fromSecondsSince1970(startTime), executable};
    raw.parentPID = 1;
    raw.processGroupID = pid;
    raw.userID = 1000;
    raw.name = QString("node");
    raw.command = {QString("node run"), QString("site")};
    raw.residentBytes = 4096;
    raw.totalCPUNanoseconds = cpuNanoseconds;
    raw.diskBytes = diskBytes;
    return raw;
}

struct Tick {
    double now;
    RawProcessMetric record;
};

// One tick: what the reader lists at `now`, and per record the CPU percent
// and disk bytes per second the probe must give it.
struct Step {
    double now;
    std::vector<RawProcessMetric> records;
    std::vector<std::pair<double, double>> rates;
};

struct Sequence {
    const char *description;
    std::vector<Step> steps;
};

using rows::PrintTo;

class ProcessRateTest : public testing::TestWithParam<Sequence> {};

TEST_P(ProcessRateTest, RatesOnlyTheSameProcessOverForwardTime)
{
    std::deque<std::vector<RawProcessMetric>> ticks;
    for (const Step &step : GetParam().steps)
        ticks.push_back(step.records);
    ProcessMetricsProbe probe(std::make_unique<ScriptedReader>(std::move(ticks)));
    for (const Step &step : GetParam().steps) {
        SCOPED_TRACE(step.now);
        const QList<ProcessMetric> metrics =
            probe.sample(TimePoint::fromSecondsSince1970(step.now));
        ASSERT_EQ(std::size_t(metrics.size()), step.rates.size());
        for (std::size_t i = 0; i < step.rates.size(); ++i) {
            EXPECT_DOUBLE_EQ(metrics[qsizetype(i)].cpuPercent, step.rates[i].first) << i;
            EXPECT_DOUBLE_EQ(metrics[qsizetype(i)].diskBytesPerSecond, step.rates[i].second) << i;
        }
    }
}

// Two ticks of one record each: the first has no rates, the second `cpu` and `disk`.
Sequence pair(const char *description, Tick first, Tick second, double cpu, double disk)
{
    return {
        description,
        {{first.now, {first.record}, {{0.0, 0.0}}}, {second.now, {second.record}, {{cpu, disk}}}}};
}

// Pid 7 started at 50 with these counters.
RawProcessMetric p7(std::uint64_t cpuNanoseconds, std::uint64_t diskBytes,
                    const QString &executable = "/usr/bin/node")
{
    return process(7, 50.0, cpuNanoseconds, diskBytes, executable);
}

INSTANTIATE_TEST_SUITE_P(
    Ticks, ProcessRateTest,
    testing::Values(
        pair("half a core and 1 MB/s over two seconds", {100, p7(10 * second, 1000000)},
             {102, p7(11 * second, 3000000)}, 50.0, 1000000.0),
        pair("many busy threads go above one core", {100, p7(0, 0)}, {102, p7(7 * second, 0)},
             350.0, 0.0),
        pair("same time twice", {100, p7(0, 0)}, {100, p7(second, 100)}, 0.0, 0.0),
        pair("time going back", {100, p7(0, 0)}, {99, p7(second, 100)}, 0.0, 0.0),
        pair("reused pid with another start time", {100, p7(0, 0)},
             {102, process(7, 101.0, 5 * second, 100)}, 0.0, 0.0),
        pair("same pid and start after an exec", {100, p7(0, 0, "/usr/bin/sh")},
             {102, p7(second, 100)}, 0.0, 0.0),
        pair("replaced binary counts as another executable", {100, p7(0, 0)},
             {102, p7(second, 100, "/usr/bin/node (deleted)")}, 0.0, 0.0),
        pair("CPU counter going back clears the disk rate too", {100, p7(5 * second, 0)},
             {102, p7(4 * second, 4000)}, 0.0, 0.0),
        pair("disk counter going back clears the CPU rate too", {100, p7(0, 4000)},
             {102, p7(second, 0)}, 0.0, 0.0),
        pair("idle process", {100, p7(second, 10)}, {102, p7(second, 10)}, 0.0, 0.0),
        // Pid 7 is missed on the second tick: on the third it has
        // no counters to compare with, though pid 8 has.
        Sequence{"a vanished process is forgotten at once",
                 {{100.0, {p7(0, 0)}, {{0, 0}}},
                  {102.0, {process(8, 50.0, 0, 0)}, {{0, 0}}},
                  {104.0, {p7(4 * second, 400), process(8, 50.0, second, 0)}, {{0, 0}, {50, 0}}},
                  {106.0, {p7(6 * second, 600)}, {{100, 100}}}}},
        Sequence{"a reused pid rates normally from the tick after",
                 {{100.0, {p7(9 * second, 0)}, {{0, 0}}},
                  {102.0, {process(7, 101.0, second, 0)}, {{0, 0}}},
                  {104.0, {process(7, 101.0, 2 * second, 0)}, {{50, 0}}}}},
        Sequence{"a pid repeated in one tick keeps both records and the first counters",
                 {{100.0, {p7(0, 0), p7(10 * second, 0)}, {{0, 0}, {0, 0}}},
                  {102.0, {p7(2 * second, 0)}, {{100, 0}}}}}),
    RowName());

// The first tick has no rates yet; every other field is the raw record's, in
// the reader's order, with the time since the start (never negative).
TEST(ProcessMetricsProbeTest, FirstTickCarriesEveryFieldWithoutRates)
{
    RawProcessMetric raw = process(42, 10.0, 50 * second, 900, "/opt/app/bin/app");
    raw.parentPID = 41;
    raw.processGroupID = 40;
    raw.userID = 501;
    raw.name = "app-helper";
    raw.applicationPath = QString("/usr/share/applications/app.desktop");
    raw.command = {"app serve", std::nullopt};
    raw.residentBytes = 123456789;
    auto reader = std::make_unique<ScriptedReader>(
        std::deque<std::vector<RawProcessMetric>>{{process(50, 130.0, second, 0), raw}});
    ScriptedReader *readerView = reader.get();
    ProcessMetricsProbe probe(std::move(reader));

    const QList<ProcessMetric> metrics = probe.sample(TimePoint::fromSecondsSince1970(25.5));

    EXPECT_EQ(readerView->times, std::vector{TimePoint::fromSecondsSince1970(25.5)});
    ASSERT_EQ(metrics.size(), 2);
    EXPECT_EQ(metrics[0].identity.pid, 50);
    EXPECT_EQ(metrics[0].duration, 0.0); // starts after the tick
    ProcessMetric expected;
    expected.identity = raw.identity;
    expected.parentPID = 41;
    expected.processGroupID = 40;
    expected.userID = 501;
    expected.name = "app-helper";
    expected.applicationPath = raw.applicationPath;
    expected.command = raw.command;
    expected.residentBytes = 123456789;
    expected.duration = 15.5;
    EXPECT_EQ(metrics[1], expected);
}

TEST(ProcessMetricsProbeTest, SamplesShareOneCopyOfEachText)
{
    // Every tick the reader builds fresh strings; across ticks and across
    // processes equal texts must end up in one shared buffer.
    auto fresh = [](pid_t pid, const char *project) {
        RawProcessMetric raw = process(pid, 50.0, 0, 0, QString::fromUtf8("/usr/bin/node"));
        raw.name = QString::fromUtf8("node");
        raw.command = {QString::fromUtf8("node run"), QString::fromUtf8(project)};
        raw.applicationPath = QString::fromUtf8("/usr/share/applications/code.desktop");
        return raw;
    };
    ProcessMetricsProbe probe(
        std::make_unique<ScriptedReader>(std::deque<std::vector<RawProcessMetric>>{
            {fresh(7, "site")}, {fresh(7, "site"), fresh(8, "other")}, {fresh(8, "other")}}));

    const QList<ProcessMetric> first = probe.sample(TimePoint::fromSecondsSince1970(100.0));
    const QList<ProcessMetric> second = probe.sample(TimePoint::fromSecondsSince1970(102.0));
    const QList<ProcessMetric> third = probe.sample(TimePoint::fromSecondsSince1970(104.0));

    const auto sameBuffer = [](const QString &a, const QString &b) {
        return a.constData() == b.constData();
    };
    EXPECT_TRUE(sameBuffer(first[0].name, second[0].name));
    EXPECT_TRUE(sameBuffer(first[0].identity.executablePath, second[0].identity.executablePath));
    EXPECT_TRUE(sameBuffer(first[0].command.command, second[0].command.command));
    EXPECT_TRUE(sameBuffer(*first[0].command.project, *second[0].command.project));
    EXPECT_TRUE(sameBuffer(*first[0].applicationPath, *second[0].applicationPath));
    // Another process of the same program shares too.
    EXPECT_TRUE(sameBuffer(second[0].name, second[1].name));
    EXPECT_TRUE(sameBuffer(second[1].identity.executablePath, third[0].identity.executablePath));
    EXPECT_TRUE(sameBuffer(*second[1].command.project, *third[0].command.project));
    EXPECT_EQ(*third[0].command.project, "other");
}

} // namespace
