#include "process/ProcessMetricsProbe.h"

#include "support/FixtureTable.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>

namespace {

constexpr std::uint64_t second = 1000000000ULL;

// Hands out one prepared list per call (none when they run out) and records
// the times it was given.
struct ScriptedReader final : RawProcessMetricReading {
    std::deque<std::vector<RawProcessMetric>> ticks;
    std::vector<TimePoint> times;

    void visitMetrics(TimePoint now, const Visitor &visit) override
    {
        times.push_back(now);
        if (ticks.empty())
            return;
        for (const RawProcessMetric &record : ticks.front())
            visit(record);
        ticks.pop_front();
    }
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

// The rates of each run of process-rate-ticks: a run is one probe, a row one
// tick, each record with the rates the probe must give it.
TEST(ProcessRateTest, RatesOnlyTheSameProcessOverForwardTime)
{
    QString run;
    ScriptedReader *reader = nullptr;
    std::unique_ptr<ProcessMetricsProbe> probe;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("process-rate-ticks"))) {
        if (*row.text(0) != run) {
            run = *row.text(0);
            auto fresh = std::make_unique<ScriptedReader>();
            reader = fresh.get();
            probe = std::make_unique<ProcessMetricsProbe>(std::move(fresh));
        }
        std::vector<RawProcessMetric> records;
        QStringList rates;
        for (std::size_t index = 2; index < row.fields.size(); ++index) {
            const QStringList record = row.text(index)->section(u'=', 0, 0).split(u':');
            records.push_back(process(record[0].toInt(), record[1].toDouble(),
                                      record[2].toULongLong() * second, record[3].toULongLong(),
                                      record.value(4, "/usr/bin/node")));
            rates << row.text(index)->section(u'=', 1);
        }
        reader->ticks.push_back(std::move(records));
        QStringList sampled;
        for (const ProcessMetric &metric :
             probe->sample(TimePoint::fromSecondsSince1970(row.text(1)->toDouble())))
            sampled << QString::number(metric.cpuPercent, 'g', 12) + u'/' +
                           QString::number(metric.diskBytesPerSecond, 'g', 12);
        EXPECT_EQ(sampled, rates) << row.where;
    }
}

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
    auto reader = std::make_unique<ScriptedReader>();
    reader->ticks = {{process(50, 130.0, second, 0), raw}};
    ScriptedReader *readerView = reader.get();
    ProcessMetricsProbe probe(std::move(reader));

    const QList<ProcessMetric> metrics = probe.sample(TimePoint::fromSecondsSince1970(25.5));

    EXPECT_EQ(readerView->times, std::vector{TimePoint::fromSecondsSince1970(25.5)});
    ASSERT_EQ(metrics.size(), 2);
    EXPECT_EQ(metrics[0].identity.pid, 50);
    EXPECT_EQ(metrics[0].duration, 0.0); // starts after the tick
    const ProcessMetric expected{.identity = raw.identity, .parentPID = 41, .processGroupID = 40,
                                 .userID = 501, .name = "app-helper",
                                 .applicationPath = raw.applicationPath, .command = raw.command,
                                 .residentBytes = 123456789, .duration = 15.5};
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
    auto reader = std::make_unique<ScriptedReader>();
    reader->ticks = {{fresh(7, "site")},
                     {fresh(7, "site"), fresh(8, "other")},
                     {fresh(8, "other")},
                     {fresh(8, "moved")}};
    ProcessMetricsProbe probe(std::move(reader));

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
    EXPECT_EQ(*probe.sample(TimePoint::fromSecondsSince1970(106.0))[0].command.project, "moved");
}

} // namespace
