// The process reader keeps each process's /proc files open from one tick to
// the next. What only the kernel can show, on processes this test starts: an
// exec and a cd are seen through the kept descriptors, a process that ends
// takes its descriptors with it, and a shortage of descriptors costs no
// process.

#include "platform/linux/ProcfsProcessMetricReader.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const RawProcessMetric *findPid(const std::vector<RawProcessMetric> &records, pid_t pid)
{
    for (const RawProcessMetric &record : records) {
        if (record.identity.pid == pid)
            return &record;
    }
    return nullptr;
}

// A child of this test that waits for a byte on a pipe, then changes into
// `after` and runs `sleep`; killed and reaped at the end.
class ChildThatExecs {
public:
    ChildThatExecs(const QString &before, const QString &after)
    {
        int fds[2];
        if (::pipe(fds) != 0)
            return;
        const QByteArray from = before.toLocal8Bit();
        const QByteArray to = after.toLocal8Bit();
        const pid_t parent = ::getpid();
        m_pid = ::fork();
        if (m_pid == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (::getppid() != parent || ::chdir(from.constData()) != 0)
                ::_exit(127);
            ::close(fds[1]);
            char byte = 0;
            if (::read(fds[0], &byte, 1) != 1 || ::chdir(to.constData()) != 0)
                ::_exit(127);
            ::execl("/bin/sleep", "sleep", "30", static_cast<char *>(nullptr));
            ::_exit(127);
        }
        ::close(fds[0]);
        m_go = fds[1];
    }
    ~ChildThatExecs()
    {
        if (m_go >= 0)
            ::close(m_go);
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
        }
    }
    ChildThatExecs(const ChildThatExecs &) = delete;
    ChildThatExecs &operator=(const ChildThatExecs &) = delete;

    pid_t pid() const { return m_pid; }

    // Lets the child go on, and waits (at most 5 s) until it runs sleep.
    bool execNow()
    {
        if (::write(m_go, "x", 1) != 1)
            return false;
        const std::string exe = "/proc/" + std::to_string(m_pid) + "/exe";
        for (int attempt = 0; attempt < 500; ++attempt) {
            std::error_code error;
            if (std::filesystem::read_symlink(exe, error).filename() == "sleep")
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return false;
    }

    void end()
    {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
        m_pid = -1;
    }

private:
    pid_t m_pid = -1;
    int m_go = -1;
};

TEST(ProcfsOpenFilesTest, KeptFilesShowAnExecAndACdAndCloseWhenTheProcessEnds)
{
    QTemporaryDir directory;
    ASSERT_TRUE(directory.isValid());
    const QString alpha = directory.filePath(QStringLiteral("alpha"));
    const QString beta = directory.filePath(QStringLiteral("beta"));
    ASSERT_TRUE(QDir().mkpath(alpha) && QDir().mkpath(beta));
    ChildThatExecs child(alpha, beta);
    ASSERT_GT(child.pid(), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(100)); // let it change into alpha

    ProcfsProcessMetricReader reader;
    const TimePoint start = TimePoint::now();
    const std::vector<RawProcessMetric> first = reader.readMetrics(start);
    const RawProcessMetric *before = findPid(first, child.pid());
    ASSERT_NE(before, nullptr);
    EXPECT_EQ(before->command.project, QStringLiteral("alpha"));
    EXPECT_NE(before->name, QStringLiteral("sleep"));
    ASSERT_GE(reader.keptProcessCapacity(), first.size());
    EXPECT_EQ(reader.keptProcessCount(), first.size()); // everything read stays open

    ASSERT_TRUE(child.execNow());
    const std::vector<RawProcessMetric> second = reader.readMetrics(start);
    const RawProcessMetric *after = findPid(second, child.pid());
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->name, QStringLiteral("sleep"));
    EXPECT_TRUE(after->identity.executablePath.endsWith(QStringLiteral("/sleep")));
    EXPECT_EQ(after->command, (RedactedCommandSummary{QStringLiteral("sleep"), "beta"}));
    EXPECT_EQ(after->identity.startTime, before->identity.startTime);

    const pid_t ended = child.pid();
    child.end();
    const std::vector<RawProcessMetric> third = reader.readMetrics(start);
    EXPECT_EQ(findPid(third, ended), nullptr);
    EXPECT_EQ(reader.keptProcessCount(), third.size());
}

// Children of this test that sleep until they are killed.
class SleepingChildren {
public:
    explicit SleepingChildren(int count)
    {
        const pid_t parent = ::getpid();
        for (int i = 0; i < count; ++i) {
            const pid_t pid = ::fork();
            if (pid == 0) {
                ::prctl(PR_SET_PDEATHSIG, SIGKILL);
                if (::getppid() == parent)
                    ::pause();
                ::_exit(0);
            }
            if (pid > 0)
                m_pids.push_back(pid);
        }
    }
    ~SleepingChildren()
    {
        for (const pid_t pid : m_pids)
            ::kill(pid, SIGKILL);
        for (const pid_t pid : m_pids)
            ::waitpid(pid, nullptr, 0);
    }
    SleepingChildren(const SleepingChildren &) = delete;
    SleepingChildren &operator=(const SleepingChildren &) = delete;

    const std::vector<pid_t> &pids() const { return m_pids; }

private:
    std::vector<pid_t> m_pids;
};

int openDescriptorCount()
{
    int count = 0;
    for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

TEST(ProcfsOpenFilesTest, AShortageOfDescriptorsCostsNoProcess)
{
    ProcfsProcessMetricReader reader;
    const TimePoint now = TimePoint::now();
    reader.readMetrics(now); // keeps what runs now
    const std::size_t keptBefore = reader.keptProcessCount();

    // New processes, and room for only a few more descriptors: the reader
    // closes some of what it keeps and reads the rest by opening and closing.
    const SleepingChildren children(40);
    ASSERT_EQ(children.pids().size(), 40u);
    rlimit saved{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &saved), 0);
    rlimit tight = saved;
    tight.rlim_cur = rlim_t(openDescriptorCount() + 6);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &tight), 0);
    const std::vector<RawProcessMetric> records = reader.readMetrics(now);
    ::setrlimit(RLIMIT_NOFILE, &saved);

    for (const pid_t pid : children.pids())
        EXPECT_NE(findPid(records, pid), nullptr) << pid;
    EXPECT_LT(reader.keptProcessCount(), keptBefore + children.pids().size());
    EXPECT_LE(reader.keptProcessCount(), reader.keptProcessCapacity());

    // With descriptors to spare again, nothing is lost either.
    const std::vector<RawProcessMetric> later = reader.readMetrics(now);
    for (const pid_t pid : children.pids())
        EXPECT_NE(findPid(later, pid), nullptr) << pid;
}

} // namespace
