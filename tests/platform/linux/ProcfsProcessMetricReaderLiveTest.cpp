// The reader's clock gate over the real /proc, on children this test starts
// itself, the only processes it signals. What a child looks like in the
// whole pipeline is checked by the report tool's run (ReportToolTest).

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcessReadGate.h"
#include "platform/linux/ProcfsProcessMetricReader.h"
#include "support/ShellChild.h"
#include "support/SyncedWrite.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <thread>
#include <utility>

#include <csignal>
#include <ctime>
#include <functional>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A child forked from this program whose main thread sits in pause() while a
// worker thread does `work` when told: what a process changes about itself
// from a thread that is not its main one. It dies with the test program, and
// the handle kills and reaps it.
class IdleChildWithWorker {
public:
    IdleChildWithWorker(const QByteArray &directory, std::function<void()> work)
    {
        if (::pipe2(m_orders, O_CLOEXEC) != 0 || ::pipe2(m_done, O_CLOEXEC) != 0)
            return;
        m_pid = ::fork();
        if (m_pid == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (::chdir(directory.constData()) != 0)
                ::_exit(1);
            std::thread([&] {
                char order = 0;
                if (::read(m_orders[0], &order, 1) == 1) {
                    work();
                    [[maybe_unused]] const ssize_t ignored = ::write(m_done[1], &order, 1);
                }
            }).detach();
            for (;;)
                ::pause();
        }
        // An exec in the child closes its end, so the wait for `done` ends.
        ::close(std::exchange(m_done[1], -1));
    }
    ~IdleChildWithWorker()
    {
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
        }
        for (const int fd : {m_orders[0], m_orders[1], m_done[0], m_done[1]})
            ::close(fd);
    }
    IdleChildWithWorker(const IdleChildWithWorker &) = delete;
    IdleChildWithWorker &operator=(const IdleChildWithWorker &) = delete;

    pid_t pid() const { return m_pid; }

    // Has the worker do its work, and returns once it is done (or has exec'd).
    bool work()
    {
        char order = 'w';
        return ::write(m_orders[1], &order, 1) == 1 && ::read(m_done[0], &order, 1) >= 0;
    }

private:
    pid_t m_pid = -1;
    int m_orders[2] = {-1, -1};
    int m_done[2] = {-1, -1};
};

// Overwrites the argument vector in place, as a program that shows its state
// in its command line does: it becomes "kw serve", a command that shows its
// subcommand.
void rewriteOwnArguments()
{
    // The area starts at argv[0], and /proc/self/cmdline spans it all.
    const FileReadResult area = readKernelFile(QByteArrayLiteral("/proc/self/cmdline"));
    constexpr char rewritten[] = "kw\0serve";
    if (area.bytes && std::size_t(area.bytes->size()) > sizeof rewritten) {
        std::fill_n(program_invocation_name, area.bytes->size(), '\0');
        std::copy(rewritten, rewritten + sizeof rewritten, program_invocation_name);
    }
}

class LiveProcfsTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_project.isValid()); }

    QTemporaryDir m_project{QDir::tempPath() + QStringLiteral("/kw-project-XXXXXX")};
};

// The gate's clock is this process's own CPU time, every thread's, read
// between two readings of the same clock through the C library.
TEST(ProcessCPUClock, ReadsAProcessesOwnTimeOfEveryThread)
{
    const auto nanoseconds = [](clockid_t clock) {
        timespec time{};
        ::clock_gettime(clock, &time);
        return std::uint64_t(time.tv_sec) * 1'000'000'000u + std::uint64_t(time.tv_nsec);
    };
    // A worker's time counts for the process, not for its main thread.
    std::thread([&] {
        const std::uint64_t start = nanoseconds(CLOCK_THREAD_CPUTIME_ID);
        while (nanoseconds(CLOCK_THREAD_CPUTIME_ID) - start < 20'000'000u) {
        }
    }).join();
    const std::uint64_t before = nanoseconds(CLOCK_PROCESS_CPUTIME_ID);
    const std::optional<std::uint64_t> own = processCPUClockNanoseconds(::getpid());
    const std::uint64_t after = nanoseconds(CLOCK_PROCESS_CPUTIME_ID);
    ASSERT_TRUE(own.has_value());
    EXPECT_LE(before, *own);
    EXPECT_LE(*own, after);
}

// An idle process is read in full only when its clock moves; whatever a
// worker thread does moves the process's clock, so it shows on the very next
// tick. The ticks before it let the process pass its first ticks, which are
// read in full whatever the clock says.
TEST_F(LiveProcfsTest, WhatAWorkerThreadOfAnIdleProcessDoesShowsOnTheNextTick)
{
    const QByteArray project = m_project.path().toLocal8Bit();
    ASSERT_TRUE(QDir(m_project.path()).mkdir(QStringLiteral("elsewhere")));
    struct Case {
        const char *description;
        std::function<void()> work;
        std::function<bool(const RawProcessMetric &before, const RawProcessMetric &after)> seen;
    };
    const Case cases[] = {
        {"exec", [] { ::execl("/bin/sleep", "sleep", "30", nullptr); },
         [](const auto &, const auto &after) {
             return after.identity.executablePath.endsWith(QStringLiteral("/sleep"));
         }},
        {"cd", [] { [[maybe_unused]] const int ignored = ::chdir("elsewhere"); },
         [](const auto &, const auto &after) {
             return after.command.project == QStringLiteral("elsewhere");
         }},
        {"argument rewrite", rewriteOwnArguments,
         [](const auto &before, const auto &after) {
             return after.command.command != before.command.command;
         }},
        {"I/O", [] { writeSynced("payload", 1); },
         [](const auto &before, const auto &after) {
             return after.diskBytes >= before.diskBytes + (1u << 20);
         }},
    };
    for (const Case &row : cases) {
        SCOPED_TRACE(row.description);
        IdleChildWithWorker child(project, row.work);
        ASSERT_GT(child.pid(), 0);
        ProcfsProcessMetricReader reader;
        std::optional<RawProcessMetric> before;
        for (unsigned tick = 0; tick <= kYoungTicks + 1; ++tick) {
            const std::vector<RawProcessMetric> records = reader.readMetrics(TimePoint::now());
            const RawProcessMetric *record = findPid(records, child.pid());
            ASSERT_TRUE(record);
            before = *record;
        }
        ASSERT_TRUE(child.work());
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                return !QFileInfo(QStringLiteral("/proc/%1/exe").arg(child.pid()))
                            .symLinkTarget()
                            .isEmpty();
            },
            5000));
        const std::vector<RawProcessMetric> records = reader.readMetrics(TimePoint::now());
        const RawProcessMetric *after = findPid(records, child.pid());
        ASSERT_TRUE(after);
        EXPECT_TRUE(row.seen(*before, *after));
    }
}

// Where this machine lets a test make a cgroup: a new directory at the root
// of the unified hierarchy, removed again by the destructor once empty.
class MadeCgroup {
public:
    MadeCgroup()
    {
        QFile mounts(QStringLiteral("/proc/self/mountinfo"));
        if (!mounts.open(QIODevice::ReadOnly))
            return;
        for (const QByteArray &line : mounts.readAll().split('\n')) {
            const QList<QByteArray> fields = line.split(' ');
            const qsizetype dash = fields.indexOf("-");
            if (dash > 4 && dash + 1 < fields.size() && fields[dash + 1] == "cgroup2" &&
                fields[3] == "/") {
                const QString path =
                    QString::fromUtf8(fields[4]) + QStringLiteral("/kw-test-%1").arg(::getpid());
                if (QDir().mkdir(path))
                    m_path = path;
                return;
            }
        }
    }
    ~MadeCgroup()
    {
        if (!m_path.isEmpty())
            QDir().rmdir(m_path);
    }
    MadeCgroup(const MadeCgroup &) = delete;
    MadeCgroup &operator=(const MadeCgroup &) = delete;

    bool isMade() const { return !m_path.isEmpty(); }
    QString name() const { return m_path.section(QLatin1Char('/'), -1); }
    bool take(pid_t pid) const
    {
        QFile procs(m_path + QStringLiteral("/cgroup.procs"));
        return procs.open(QIODevice::WriteOnly) && procs.write(QByteArray::number(pid)) > 0 &&
               procs.flush();
    }

private:
    QString m_path;
};

// What others change about a process that does not run shows within the
// sweep: its working directory or its executable renamed under it, and a
// move to another cgroup where this machine lets a test make one.
TEST_F(LiveProcfsTest, OutsideChangesToAnIdleProcessShowWithinTheSweep)
{
    QDir project(m_project.path());
    ASSERT_TRUE(project.mkdir(QStringLiteral("before")));
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/sleep"), project.filePath(QStringLiteral("nap"))));
    const MadeCgroup cgroup; // outlives the children, which must leave it first
    struct Case {
        const char *description;
        bool possible;
        std::function<bool(pid_t)> change;
        std::function<bool(const RawProcessMetric &)> seen;
    };
    const Case cases[] = {
        {"working directory renamed", true,
         [&](pid_t) { return project.rename(QStringLiteral("before"), QStringLiteral("after")); },
         [](const RawProcessMetric &record) {
             return record.command.project == QStringLiteral("after");
         }},
        {"executable renamed", true,
         [&](pid_t) { return project.rename(QStringLiteral("nap"), QStringLiteral("doze")); },
         [](const RawProcessMetric &record) {
             return record.identity.executablePath.endsWith(QStringLiteral("/doze"));
         }},
        {"moved to another cgroup", cgroup.isMade(), [&](pid_t pid) { return cgroup.take(pid); },
         [&](const RawProcessMetric &record) {
             return record.controlGroup.endsWith(QLatin1Char('/') + cgroup.name());
         }},
    };
    for (const Case &row : cases) {
        SCOPED_TRACE(row.description);
        if (!row.possible) {
            std::cout << "not tried here: " << row.description << '\n';
            continue;
        }
        const ShellChild child(project.filePath(QStringLiteral("before")).toLocal8Bit(),
                               {"sh", "-c", "exec ../nap 60"});
        ASSERT_TRUE(child.started());
        const QString exe = QStringLiteral("/proc/%1/exe").arg(child.pid());
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return QFileInfo(exe).symLinkTarget().endsWith(QStringLiteral("/nap")); }, 5000));
        ProcfsProcessMetricReader reader;
        auto recordNow = [&] {
            const std::vector<RawProcessMetric> records = reader.readMetrics(TimePoint::now());
            const RawProcessMetric *record = findPid(records, child.pid());
            return record ? std::optional(*record) : std::nullopt;
        };
        for (unsigned tick = 0; tick <= kYoungTicks; ++tick) {
            const std::optional<RawProcessMetric> record = recordNow();
            ASSERT_TRUE(record && !row.seen(*record));
        }
        ASSERT_TRUE(row.change(child.pid()));
        bool seen = false;
        for (unsigned tick = 0; tick < kSweepTicks && !seen; ++tick) {
            const std::optional<RawProcessMetric> record = recordNow();
            seen = record && row.seen(*record);
        }
        EXPECT_TRUE(seen) << "not within " << kSweepTicks << " ticks";
        // Back as it was for the next row.
        project.rename(QStringLiteral("after"), QStringLiteral("before"));
        project.rename(QStringLiteral("doze"), QStringLiteral("nap"));
    }
}

// A process whose parent leaves gets a new parent without running: it is
// read again on the tick that finds its parent gone. The grandchild, a
// background sleep of the shell, ends by itself and is never signalled.
TEST_F(LiveProcfsTest, ChildOfAProcessThatLeftShowsItsNewParentOnThatTick)
{
    ShellChild parent(m_project.path().toLocal8Bit(), {"sh", "-c", "sleep 20 & exec sleep 60"});
    ASSERT_TRUE(parent.started());
    ProcfsProcessMetricReader reader;
    pid_t grandchild = 0;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            for (const RawProcessMetric &record : reader.readMetrics(TimePoint::now())) {
                if (record.parentPID == parent.pid() &&
                    record.identity.executablePath.endsWith(QStringLiteral("/sleep")))
                    grandchild = record.identity.pid;
            }
            return grandchild != 0;
        },
        5000));
    for (unsigned tick = 0; tick <= kYoungTicks; ++tick)
        ASSERT_TRUE(findPid(reader.readMetrics(TimePoint::now()), grandchild));
    ASSERT_EQ(::kill(parent.pid(), SIGKILL), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return hasExited(parent.pid()); }, 5000));
    const std::vector<RawProcessMetric> records = reader.readMetrics(TimePoint::now());
    const RawProcessMetric *record = findPid(records, grandchild);
    ASSERT_TRUE(record);
    EXPECT_NE(record->parentPID, parent.pid());
}

} // namespace
