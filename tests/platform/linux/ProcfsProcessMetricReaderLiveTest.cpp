// The reader and the probe over the real /proc, on this test program and on
// a child it starts itself, the only process it signals.

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcPidFiles.h"
#include "platform/linux/ProcfsProcessMetricReader.h"
#include "process/ProcessMetricsProbe.h"
#include "support/ProcessPrinting.h"
#include "support/ShellChild.h"
#include "support/SyncedWrite.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace {

// Nanoseconds the process has run on a CPU, from the scheduler's own account
// (first field of /proc/<pid>/schedstat); a second opinion on the CPU time.
std::optional<double> scheduledNanoseconds(pid_t pid)
{
    QFile file(QStringLiteral("/proc/%1/schedstat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    bool ok = false;
    const double value = file.readAll().split(' ').value(0).toDouble(&ok);
    return ok ? std::optional<double>(value) : std::nullopt;
}

class LiveProcfsTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_project.isValid()); }

    QTemporaryDir m_project{QDir::tempPath() + QStringLiteral("/kw-project-XXXXXX")};
};

// One tick of about a second: the spinning shell gets what the scheduler
// gives it (little on a busy machine), and the reading is what the scheduler
// says it took over the same interval.
TEST_F(LiveProcfsTest, SpinningChildComesBackRedactedWithItsProjectAndItsOwnCPUTime)
{
    const ShellChild child(m_project.path().toLocal8Bit(),
                           spinningShellArguments({"test", "--token=abc123"}));
    ASSERT_TRUE(child.started());
    ProcessMetricsProbe probe(std::make_unique<ProcfsProcessMetricReader>());
    const TimePoint start = TimePoint::now();
    const QList<ProcessMetric> before = probe.sample(start);
    const auto scheduledBefore = scheduledNanoseconds(child.pid());
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const TimePoint end = TimePoint::now();
    const QList<ProcessMetric> after = probe.sample(end);
    const auto scheduledAfter = scheduledNanoseconds(child.pid());
    const ProcessMetric *first = findPid(before, child.pid());
    const ProcessMetric *metric = findPid(after, child.pid());
    ASSERT_TRUE(first && metric);

    const QString shell = QFileInfo(QStringLiteral("/bin/sh")).canonicalFilePath();
    EXPECT_EQ(first->identity.executablePath, shell);
    EXPECT_EQ(first->command,
              (RedactedCommandSummary{QFileInfo(shell).fileName() + QStringLiteral(" test"),
                                      QFileInfo(m_project.path()).fileName()}));
    EXPECT_EQ(first->parentPID, ::getpid());
    EXPECT_EQ(first->userID, ::getuid());
    EXPECT_EQ(first->identity, metric->identity) << "the start time must not move";
    const double age = start.secondsSince(first->identity.startTime);
    EXPECT_GE(age, -0.02);
    EXPECT_LT(age, 30.0);
    for (const QString &text : {first->name, first->identity.executablePath, first->command.command,
                                first->command.project.value_or("")})
        EXPECT_FALSE(text.contains(QStringLiteral("abc123"))) << text.toStdString();

    EXPECT_GT(metric->cpuPercent, 0.0);
    EXPECT_LT(metric->cpuPercent, 130.0); // one thread never takes more than a core
    if (scheduledBefore && scheduledAfter) {
        const double scheduledPercent =
            (*scheduledAfter - *scheduledBefore) / end.secondsSince(start) / 1e7;
        EXPECT_NEAR(metric->cpuPercent, scheduledPercent, 15.0);
    }
}

// A sleeping child's resident size holds still, so the reader's reading
// must equal what statm says right after. stat's field 24 is no stand-in:
// recent kernels let it lag statm by several percent.
TEST_F(LiveProcfsTest, SleepingChildsResidentSizeIsStatms)
{
    const ShellChild child(m_project.path().toLocal8Bit(), {"sh", "-c", "exec sleep 30"});
    ASSERT_TRUE(child.started());
    const QString exe = QStringLiteral("/proc/%1/exe").arg(child.pid());
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return QFileInfo(exe).symLinkTarget().endsWith(QStringLiteral("/sleep")); }, 5000));
    ProcfsProcessMetricReader reader;
    const std::vector<RawProcessMetric> records = reader.readMetrics(TimePoint::now());
    const FileReadResult statm = readKernelFile(QStringLiteral("/proc/%1/statm").arg(child.pid()));
    const RawProcessMetric *record = findPid(records, child.pid());
    ASSERT_TRUE(record && statm.bytes);
    const auto resident = parseProcPidStatmResidentBytes(asView(*statm.bytes),
                                                         std::uint64_t(::sysconf(_SC_PAGESIZE)));
    ASSERT_TRUE(resident);
    EXPECT_GT(*resident, 0u);
    EXPECT_EQ(record->residentBytes, *resident);
}

// The test program itself, the one process here whose own writes and CPU
// time the test knows without a child.
TEST_F(LiveProcfsTest, ReaderSeesItsOwnWritesAndNoOtherUsers)
{
    ProcessMetricsProbe probe(std::make_unique<ProcfsProcessMetricReader>());
    const TimePoint start = TimePoint::now();
    const QList<ProcessMetric> first = probe.sample(start);
    const ProcessMetric *before = findPid(first, ::getpid());
    ASSERT_TRUE(before);
    EXPECT_EQ(before->identity.executablePath,
              QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath());
    EXPECT_EQ(before->parentPID, ::getppid());
    EXPECT_GT(before->residentBytes, 0u);
    EXPECT_EQ(before->diskBytesPerSecond, 0.0);
    for (const ProcessMetric &process : first)
        EXPECT_EQ(process.userID, ::getuid()) << process.identity.pid;

    // 8 MiB written and synced, beside what this process's own I/O account
    // says over the same interval (code paged in from disk counts too).
    auto ownIo = [] {
        const FileReadResult io = readKernelFile(QByteArrayLiteral("/proc/self/io"));
        return io.bytes ? parseProcPidIoDiskBytes(asView(*io.bytes)).value_or(0) : 0;
    };
    const std::uint64_t ioBefore = ownIo();
    const QByteArray path = (m_project.path() + QStringLiteral("/payload")).toLocal8Bit();
    ASSERT_TRUE(writeSynced(path, 8));
    const double measured = double(ownIo() - ioBefore);
    const TimePoint end = TimePoint::now();
    const QList<ProcessMetric> second = probe.sample(end);
    const ProcessMetric *after = findPid(second, ::getpid());
    ASSERT_TRUE(after);
    const double written = after->diskBytesPerSecond * end.secondsSince(start);
    constexpr double payload = 8 << 20;
    EXPECT_GE(written, 0.95 * payload);
    EXPECT_NEAR(written, measured, 0.05 * payload);
}

} // namespace
