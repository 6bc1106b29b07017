#include "platform/linux/ProcfsProcessMetricReader.h"
#include "support/FixtureProcRoot.h"
#include "support/Fixtures.h"
#include "support/ProcessPrinting.h"

#include <QDir>
#include <QFile>

#include "support/RowName.h"

#include <gtest/gtest.h>

#include <map>
#include <ostream>

#include <unistd.h>

namespace {

std::map<pid_t, RawProcessMetric> readByPid(const QString &root, TimePoint now)
{
    ProcfsProcessMetricReader reader(root);
    std::map<pid_t, RawProcessMetric> byPid;
    for (RawProcessMetric &record : reader.readMetrics(now)) {
        const pid_t pid = record.identity.pid;
        EXPECT_TRUE(byPid.emplace(pid, std::move(record)).second) << "pid " << pid << " twice";
    }
    return byPid;
}

constexpr long long bootTime = 1700000000;
const TimePoint tickTime = TimePoint::fromSecondsSince1970(1700000500.0);

struct OddProcessCase {
    const char *description;
    pid_t pid;
    QString name;
    QString executablePath;
    RedactedCommandSummary command;
    std::uint64_t diskBytes;
};

void PrintTo(const OddProcessCase &row, std::ostream *out)
{
    *out << row.description;
}

class ProcfsOddProcessTest : public testing::TestWithParam<OddProcessCase> {
protected:
    static void SetUpTestSuite()
    {
        s_root = new FixtureProcRoot(QStringLiteral("procfs-odd-processes"));
        ASSERT_TRUE(s_root->isReady());
        s_records = new std::map<pid_t, RawProcessMetric>(readByPid(s_root->path(), tickTime));
    }
    static void TearDownTestSuite()
    {
        delete s_records;
        delete s_root;
    }
    static inline FixtureProcRoot *s_root = nullptr;
    static inline std::map<pid_t, RawProcessMetric> *s_records = nullptr;
};

TEST_P(ProcfsOddProcessTest, GivesACorrectRecord)
{
    const OddProcessCase &row = GetParam();
    ASSERT_EQ(s_records->count(row.pid), 1u);
    const RawProcessMetric &record = s_records->at(row.pid);
    EXPECT_EQ(record.name, row.name);
    EXPECT_EQ(record.identity.executablePath, row.executablePath);
    EXPECT_EQ(record.command, row.command);
    EXPECT_EQ(record.diskBytes, row.diskBytes);
    EXPECT_EQ(record.applicationPath, std::nullopt);
    EXPECT_EQ(record.sampledAt, tickTime);
}

INSTANTIATE_TEST_SUITE_P(
    Fixture, ProcfsOddProcessTest,
    testing::Values(OddProcessCase{"ordinary process, secret argument dropped",
                                   100,
                                   "node",
                                   "/usr/bin/node",
                                   {"node run", QString("site")},
                                   12288},
                    OddProcessCase{"name with blanks and parentheses, empty arguments, cwd root",
                                   101,
                                   "a) b (c)",
                                   "/usr/bin/make",
                                   {"make test", std::nullopt},
                                   12288},
                    OddProcessCase{"invalid UTF-8 arguments left out, so a later one becomes "
                                   "argv0; cwd back to a home folder",
                                   107,
                                   "python3",
                                   "/usr/bin/python3.11",
                                   {"python3.11 dev", std::nullopt},
                                   12288},
                    OddProcessCase{"last argument without NUL, cwd with trailing slash",
                                   108,
                                   "npm",
                                   "/usr/lib/node/npm",
                                   {"npm start", QString("site")},
                                   12288},
                    OddProcessCase{"empty comm falls back to the executable, no io file",
                                   109,
                                   "server",
                                   "/opt/tools/bin/server (deleted)",
                                   {"server watch", QString("tools")},
                                   0},
                    OddProcessCase{"malformed io counts no traffic",
                                   110,
                                   "io-odd",
                                   "/usr/bin/io-odd",
                                   {"io-odd", QString("tmp")},
                                   0},
                    OddProcessCase{"empty cmdline and no cwd",
                                   112,
                                   "bare",
                                   "/usr/bin/bare",
                                   {"bare", std::nullopt},
                                   12288},
                    OddProcessCase{"newline in the name shown as ?, cwd back to a home",
                                   115,
                                   "two?lines",
                                   "/usr/bin/two",
                                   {"two serve", std::nullopt},
                                   12288}),
    RowName());

TEST_F(ProcfsOddProcessTest, LeavesOutWhatCannotBeReadWhole)
{
    // 102 truncated stat, 103 empty stat, 104 gone before reading, 105 exe
    // link gone, 106 exe not a link, 111 stat cut before rss, 114 CPU time beyond
    // 64 bits of nanoseconds; "0", "01", "12a", "self" and "sys" are no pids.
    std::vector<pid_t> pids;
    for (const auto &entry : *s_records)
        pids.push_back(entry.first);
    EXPECT_EQ(pids, (std::vector<pid_t>{100, 101, 107, 108, 109, 110, 112, 115}));
}

TEST_F(ProcfsOddProcessTest, ReadsCountersAndLineage)
{
    const long ticksPerSecond = ::sysconf(_SC_CLK_TCK);
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    const RawProcessMetric &node = s_records->at(100);
    EXPECT_EQ(node.identity.startTime,
              TimePoint::fromSecondsSince1970(double(bootTime) + 12300.0 / double(ticksPerSecond)));
    EXPECT_EQ(node.parentPID, 1);
    EXPECT_EQ(node.processGroupID, 99);
    EXPECT_EQ(node.userID, ::getuid());
    EXPECT_EQ(node.residentBytes, 250u * std::uint64_t(pageSize));
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
    stat.write("cpu  1 2 3 4\n");
    stat.close();
    EXPECT_TRUE(readByPid(root.path(), tickTime).empty());
    EXPECT_TRUE(readByPid(root.path() + QStringLiteral("/missing"), tickTime).empty());
}

TEST(ProcfsProcessMetricReaderTest, SkipsProcessesOfOtherUsers)
{
    if (::getuid() != 0)
        GTEST_SKIP() << "giving a fixture directory to another user needs root";
    FixtureProcRoot root(QStringLiteral("procfs-odd-processes"));
    ASSERT_TRUE(root.isReady());
    const QByteArray directory = (root.path() + QStringLiteral("/100")).toLocal8Bit();
    ASSERT_EQ(::chown(directory.constData(), 65534, 65534), 0);
    const auto records = readByPid(root.path(), tickTime);
    EXPECT_EQ(records.count(100), 0u);
    EXPECT_EQ(records.count(101), 1u);
}

TEST(ProcfsProcessMetricReaderTest, ReadsApplicationIdentityServiceManagersAndAccountHomes)
{
    FixtureProcRoot root(QStringLiteral("procfs-odd-processes"));
    ASSERT_TRUE(root.isReady());
    // 100 runs in Firefox's scope, 107 in an application without a desktop
    // entry, 108 in a login session, 110 is the user's own systemd (by its
    // cgroup, whatever its executable), 101 runs what pid 1 would run.
    ASSERT_TRUE(root.write("100/cgroup", "0::/user.slice/user@1000.service/app.slice/"
                                         "app-gnome-firefox-4242.scope\n"));
    ASSERT_TRUE(root.write("107/cgroup", "0::/user.slice/user@1000.service/app.slice/"
                                         "app-org.example.Editor-77.scope\n"));
    ASSERT_TRUE(root.write("108/cgroup", "0::/user.slice/user-1000.slice/session-2.scope\n"));
    ASSERT_TRUE(root.write("110/cgroup", "0::/user.slice/user-1000.slice/user@1000.service/"
                                         "init.scope\n"));

    const QString applications = fixturePath(QStringLiteral("xdg-desktop/usr/share"));
    // The cwd of 100 is /home/x/work/site: with that as the home, no project.
    ProcfsProcessMetricReader reader(root.path(), {applications},
                                     QStringLiteral("/home/x/work/site/"));
    std::map<pid_t, RawProcessMetric> byPid;
    for (RawProcessMetric &record : reader.readMetrics(tickTime))
        byPid.emplace(record.identity.pid, std::move(record));

    EXPECT_EQ(byPid.at(100).applicationPath, applications + "/applications/firefox.desktop");
    EXPECT_EQ(byPid.at(100).applicationName, QStringLiteral("Firefox Web Browser"));
    EXPECT_EQ(
        byPid.at(100).controlGroup,
        QStringLiteral("/user.slice/user@1000.service/app.slice/app-gnome-firefox-4242.scope"));
    EXPECT_EQ(byPid.at(107).applicationPath, QStringLiteral("org.example.Editor"));
    EXPECT_EQ(byPid.at(107).applicationName, QStringLiteral("Editor"));
    EXPECT_EQ(byPid.at(108).applicationPath, std::nullopt);
    EXPECT_EQ(byPid.at(112).applicationPath, std::nullopt); // no cgroup file at all
    EXPECT_EQ(byPid.at(112).controlGroup, QString());
    EXPECT_TRUE(byPid.at(110).isServiceManager);
    EXPECT_FALSE(byPid.at(100).isServiceManager);
    EXPECT_FALSE(byPid.at(101).isServiceManager);
    EXPECT_EQ(byPid.at(100).command.project, std::nullopt); // the home itself
    EXPECT_EQ(byPid.at(110).command.project, QStringLiteral("tmp"));
}

} // namespace
