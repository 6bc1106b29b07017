// The reader and the probe over the real /proc, on children this test starts
// itself. Only those children are ever signalled, and every one is reaped.

#include "platform/linux/ProcfsProcessMetricReader.h"
#include "process/ProcessMetricsProbe.h"
#include "support/ProcessPrinting.h"
#include "support/ShellChild.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The writer child below, killed and reaped when the test ends.
class ReapedChild {
public:
    explicit ReapedChild(pid_t pid) : m_pid(pid) {}
    ReapedChild(const ReapedChild &) = delete;
    ReapedChild &operator=(const ReapedChild &) = delete;
    ~ReapedChild()
    {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }

private:
    pid_t m_pid;
};

std::optional<RawProcessMetric> findProcess(const std::vector<RawProcessMetric> &records, pid_t pid)
{
    for (const RawProcessMetric &record : records) {
        if (record.identity.pid == pid)
            return record;
    }
    return std::nullopt;
}

std::optional<ProcessMetric> findProcess(const QList<ProcessMetric> &metrics, pid_t pid)
{
    for (const ProcessMetric &metric : metrics) {
        if (metric.identity.pid == pid)
            return metric;
    }
    return std::nullopt;
}

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
    void SetUp() override
    {
        ASSERT_TRUE(m_project.isValid());
        m_projectName = QFileInfo(m_project.path()).fileName();
    }

    QTemporaryDir m_project{QDir::tempPath() + QStringLiteral("/kw-project-XXXXXX")};
    QString m_projectName;
};

TEST_F(LiveProcfsTest, SpinningChildComesBackRedactedWithItsProjectAndNearOneCore)
{
    const ShellChild child(m_project.path().toLocal8Bit(),
                           spinningShellArguments({"test", "--token=abc123"}));
    ASSERT_TRUE(child.started());

    ProcfsProcessMetricReader reader;
    const auto first = findProcess(reader.readMetrics(TimePoint::now()), child.pid());
    const auto second = findProcess(reader.readMetrics(TimePoint::now()), child.pid());
    ASSERT_TRUE(first && second);

    const QString shell = QFileInfo(QStringLiteral("/bin/sh")).canonicalFilePath();
    EXPECT_EQ(first->identity.executablePath, shell);
    EXPECT_EQ(first->command,
              (RedactedCommandSummary{QFileInfo(shell).fileName() + QStringLiteral(" test"),
                                      m_projectName}));
    EXPECT_EQ(first->parentPID, ::getpid());
    EXPECT_EQ(first->userID, ::getuid());
    EXPECT_EQ(first->identity, second->identity) << "the start time must not move";
    const double age = TimePoint::now().secondsSince(first->identity.startTime);
    EXPECT_GE(age, -0.02);
    EXPECT_LT(age, 30.0);
    for (const QString &text : {first->name, first->identity.executablePath,
                                first->command.command, first->command.project.value_or("")})
        EXPECT_FALSE(text.contains(QStringLiteral("abc123"))) << text.toStdString();

    // One tick of about a second: the spinning shell gets what the scheduler
    // gives it (little on a busy machine), and the reading is exactly what the
    // scheduler says it took over the same interval.
    ProcessMetricsProbe probe(std::make_unique<ProcfsProcessMetricReader>());
    const TimePoint start = TimePoint::now();
    probe.sample(start);
    const auto scheduledBefore = scheduledNanoseconds(child.pid());
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const TimePoint end = TimePoint::now();
    const auto metric = findProcess(probe.sample(end), child.pid());
    const auto scheduledAfter = scheduledNanoseconds(child.pid());
    ASSERT_TRUE(metric);
    EXPECT_GT(metric->cpuPercent, 0.0);
    EXPECT_LT(metric->cpuPercent, 130.0); // one thread never takes more than a core
    if (scheduledBefore && scheduledAfter) {
        const double scheduledPercent =
            (*scheduledAfter - *scheduledBefore) / end.secondsSince(start) / 1e7;
        EXPECT_NEAR(metric->cpuPercent, scheduledPercent, 15.0);
    }
}

TEST_F(LiveProcfsTest, ChildThatWritesAndSyncsShowsADiskRate)
{
    const QByteArray file = (m_project.path() + QStringLiteral("/payload")).toLocal8Bit();
    constexpr std::size_t chunk = 1 << 20;
    constexpr int chunks = 8;
    static char zeros[chunk];

    int go[2], done[2];
    ASSERT_EQ(::pipe2(go, O_CLOEXEC), 0);
    ASSERT_EQ(::pipe2(done, O_CLOEXEC), 0);
    const pid_t pid = ::fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        // Only async-signal-safe calls between fork and exit.
        char byte;
        if (::read(go[0], &byte, 1) == 1) {
            const int fd = ::open(file.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            for (int i = 0; fd >= 0 && i < chunks; ++i) {
                if (::write(fd, zeros, chunk) != static_cast<ssize_t>(chunk))
                    break;
            }
            if (fd >= 0) {
                ::fsync(fd);
                ::close(fd);
            }
            if (::write(done[1], "x", 1) == 1)
                ::pause();
        }
        ::_exit(0);
    }
    const ReapedChild child(pid);
    ::close(go[0]);
    ::close(done[1]);

    ProcessMetricsProbe probe(std::make_unique<ProcfsProcessMetricReader>());
    const TimePoint start = TimePoint::now();
    const auto before = findProcess(probe.sample(start), pid);
    ASSERT_TRUE(before);
    EXPECT_EQ(before->diskBytesPerSecond, 0.0);
    EXPECT_EQ(before->parentPID, ::getpid());

    char byte = 'x';
    ASSERT_EQ(::write(go[1], &byte, 1), 1);
    ASSERT_EQ(::read(done[0], &byte, 1), 1);
    ::close(go[1]);
    ::close(done[0]);

    const TimePoint end = TimePoint::now();
    const auto after = findProcess(probe.sample(end), pid);
    ASSERT_TRUE(after);
    const double written = after->diskBytesPerSecond * end.secondsSince(start);
    EXPECT_GE(written, 0.95 * chunk * chunks);
    EXPECT_LE(written, 1.25 * chunk * chunks);
}

TEST_F(LiveProcfsTest, ReaderSeesItsOwnProcessAndNoOtherUsers)
{
    // CPU time counts in 10 ms clock ticks; a freshly started test program
    // may not have used one yet.
    const auto spinUntil = std::chrono::steady_clock::now() + std::chrono::milliseconds(50);
    volatile unsigned long spin = 0;
    while (std::chrono::steady_clock::now() < spinUntil)
        spin = spin + 1;
    ProcfsProcessMetricReader reader;
    const auto records = reader.readMetrics(TimePoint::now());
    const auto self = findProcess(records, ::getpid());
    ASSERT_TRUE(self);
    EXPECT_EQ(self->identity.executablePath,
              QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath());
    EXPECT_GT(self->residentBytes, 0u);
    EXPECT_GT(self->totalCPUNanoseconds, 0u);
    for (const RawProcessMetric &record : records)
        EXPECT_EQ(record.userID, ::getuid()) << record.identity.pid;
}

} // namespace
