#include "platform/linux/ProcfsProcessMetricReader.h"
#include "platform/linux/ProcessReadGate.h"
#include "support/FixtureProcRoot.h"
#include "support/FixtureTable.h"
#include "support/Fixtures.h"
#include "support/ProcessPrinting.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <map>

#include <unistd.h>

namespace {

const TimePoint tickTime = TimePoint::fromSecondsSince1970(1700000500.0);

std::map<pid_t, RawProcessMetric> readByPid(const QString &root, QStringList applications = {},
                                            std::optional<QString> home = std::nullopt)
{
    ProcfsProcessMetricReader reader(root, std::move(applications), std::move(home));
    std::map<pid_t, RawProcessMetric> byPid;
    for (RawProcessMetric &record : reader.readMetrics(tickTime)) {
        const pid_t pid = record.identity.pid;
        EXPECT_TRUE(byPid.emplace(pid, std::move(record)).second) << "pid " << pid << " twice";
    }
    return byPid;
}

// One copy of the fixture, read once, for the whole suite.
class ProcfsOddProcessTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        const FixtureProcRoot root(QStringLiteral("procfs-odd-processes"));
        ASSERT_TRUE(root.isReady());
        s_records = new std::map<pid_t, RawProcessMetric>(
            readByPid(root.path(), {s_applications}, "/home/x/work/site/"));
    }
    static void TearDownTestSuite() { delete s_records; }
    static inline const QString s_applications =
        fixturePath(QStringLiteral("xdg-desktop/usr/share"));
    static inline std::map<pid_t, RawProcessMetric> *s_records = nullptr;
};

TEST_F(ProcfsOddProcessTest, GivesACorrectRecordOfEachOddProcess)
{
    const auto orNone = [](const QString &text) {
        return text.isEmpty() ? std::nullopt : std::optional(text);
    };
    const std::vector<FixtureRow> rows = fixtureTable(QStringLiteral("procfs-odd-processes"));
    EXPECT_EQ(s_records->size(), rows.size()); // and none of what the table leaves out
    for (const FixtureRow &row : rows) {
        SCOPED_TRACE(row.where);
        ASSERT_EQ(row.fields.size(), 10u);
        const pid_t pid = row.fields[0].toInt();
        ASSERT_EQ(s_records->count(pid), 1u);
        const RawProcessMetric &record = s_records->at(pid);
        EXPECT_EQ(record.name, row.text(1));
        EXPECT_EQ(record.identity.executablePath, row.text(2));
        EXPECT_EQ(record.command, (RedactedCommandSummary{*row.text(3), orNone(*row.text(9))}));
        EXPECT_EQ(record.diskBytes, row.fields[4].toULongLong());
        EXPECT_EQ(record.controlGroup, row.text(5));
        const QString application = *row.text(6);
        EXPECT_EQ(
            record.applicationPath,
            orNone(application.startsWith(u'/') ? s_applications + application : application));
        EXPECT_EQ(record.applicationName, row.text(7));
        EXPECT_EQ(record.isServiceManager, row.fields[8] == "manager");
        EXPECT_EQ(record.sampledAt, tickTime);
    }
}

TEST_F(ProcfsOddProcessTest, ReadsCountersAndLineage)
{
    const long ticksPerSecond = ::sysconf(_SC_CLK_TCK);
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    const RawProcessMetric &node = s_records->at(100);
    // Booted at 1700000000, started 12300 ticks later.
    EXPECT_EQ(node.identity.startTime,
              TimePoint::fromSecondsSince1970(1700000000.0 + 12300.0 / double(ticksPerSecond)));
    EXPECT_EQ(node.parentPID, 1);
    EXPECT_EQ(node.processGroupID, 99); // not its session, 98
    EXPECT_EQ(node.userID, ::getuid());
    // statm's 270 resident pages, not stat's drifting field 24 (250).
    EXPECT_EQ(node.residentBytes, 270u * std::uint64_t(pageSize));
    // utime 250 + stime 50 ticks.
    EXPECT_EQ(node.totalCPUNanoseconds, 300u * 1000000000ULL / std::uint64_t(ticksPerSecond));
    EXPECT_EQ(s_records->at(101).parentPID, 100);
}

TEST(ProcfsProcessMetricReaderTest, ReadsNothingWithoutABootTime)
{
    FixtureProcRoot root(QStringLiteral("procfs-odd-processes"));
    ASSERT_TRUE(root.isReady());
    QFile stat(root.path() + QStringLiteral("/stat"));
    ASSERT_TRUE(stat.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(stat.write("cpu  1 2 3 4\n"), 13);
    stat.close();
    EXPECT_TRUE(readByPid(root.path()).empty());
    EXPECT_TRUE(readByPid(root.path() + QStringLiteral("/missing")).empty());
}

TEST(ProcfsProcessMetricReaderTest, SkipsProcessesOfOtherUsers)
{
    if (::getuid() != 0)
        GTEST_SKIP() << "giving a fixture directory to another user needs root";
    FixtureProcRoot root(QStringLiteral("procfs-odd-processes"));
    ASSERT_TRUE(root.isReady());
    const QByteArray directory = (root.path() + QStringLiteral("/100")).toLocal8Bit();
    ASSERT_EQ(::chown(directory.constData(), 65534, 65534), 0);
    const auto records = readByPid(root.path());
    EXPECT_EQ(records.count(100), 0u);
    EXPECT_EQ(records.count(101), 1u);
}

// A pid with neither an executable nor memory (a kernel thread to root, a
// zombie) is not asked again every tick, but never hidden for good: once it
// reads as a process, here with new files as a new process brings, it shows
// within the sweep.
TEST(ProcfsProcessMetricReaderTest, PidWithoutExecutableOrMemoryShowsOnceItHasBoth)
{
    FixtureProcRoot root(QStringLiteral("procfs-odd-processes"));
    ASSERT_TRUE(root.isReady());
    const QDir source(root.path() + QStringLiteral("/100"));
    QDir pid(root.path() + QStringLiteral("/300"));
    ASSERT_TRUE(pid.mkpath(QStringLiteral(".")));
    for (const char *name : {"stat", "io", "cgroup", "cmdline"})
        ASSERT_TRUE(QFile::copy(source.filePath(name), pid.filePath(name)));
    const auto writeStatm = [&](const char *text) {
        QFile file(pid.filePath(QStringLiteral("statm.new")));
        return file.open(QIODevice::WriteOnly) && file.write(text) > 0 && file.flush() &&
               ::rename(file.fileName().toLocal8Bit().constData(),
                        pid.filePath(QStringLiteral("statm")).toLocal8Bit().constData()) == 0;
    };
    ASSERT_TRUE(writeStatm("0 0 0 0 0 0 0\n"));

    ProcfsProcessMetricReader reader(root.path());
    const auto seen = [&] {
        for (const RawProcessMetric &record : reader.readMetrics(tickTime))
            if (record.identity.pid == 300)
                return true;
        return false;
    };
    ASSERT_FALSE(seen());
    ASSERT_FALSE(seen());
    ASSERT_TRUE(writeStatm("2441 270 180 20 0 610 0\n"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/usr/bin/node"), pid.filePath(QStringLiteral("exe"))));
    bool shown = false;
    for (unsigned tick = 0; tick < kSweepTicks && !shown; ++tick)
        shown = seen();
    EXPECT_TRUE(shown) << "not within " << kSweepTicks << " ticks";
}

// The gate's rule, and the sweep's promise: over any kSweepTicks ticks in a
// row, every slot is swept exactly once.
TEST(ProcessReadGate, ReadsInFullWhenTheClockMovedOrYoungAndSweepsOnItsSlot)
{
    const std::optional<std::uint64_t> none;
    using enum ProcessRead;
    struct Case {
        const char *description;
        ProcessReadFacts facts;
        ProcessRead read;
    };
    // clang-format off
    const Case cases[] = {
        {"clock unreadable",         {5, none, 9, 3, 4},              full},
        {"no clock at last read",    {none, 5, 9, 3, 4},              full},
        {"clock moved",              {5, 6, 9, 3, 4},                 full},
        {"young",                    {5, 5, kYoungTicks, 3, 4},       full},
        {"young on its slot",        {5, 5, kYoungTicks, 3, 3},       full},
        {"moved on its slot",        {5, 6, 9, 3, 3},                 full},
        {"still, old, not its slot", {5, 5, kYoungTicks + 1, 3, 4},   carry},
        {"its sweep slot",           {5, 5, 9, 3, 3 + kSweepTicks},   sweep},
    };
    // clang-format on
    for (const Case &row : cases)
        EXPECT_EQ(processRead(row.facts), row.read) << row.description;

    for (unsigned first = 0; first < 2 * kSweepTicks; ++first) {
        for (unsigned slot = 0; slot < kSweepTicks; ++slot) {
            unsigned sweeps = 0;
            for (unsigned tick = first; tick < first + kSweepTicks; ++tick)
                sweeps += processRead({5, 5, 9, slot, tick}) == sweep ? 1 : 0;
            EXPECT_EQ(sweeps, 1u) << "slot " << slot << " from tick " << first;
        }
    }
}

} // namespace
