// Load sources over the real /proc: process groups this test starts itself,
// read by the real reader and probe, grouped, classified and ranked by the
// store. Only those groups are ever signalled.

#include "platform/PlatformFactory.h"
#include "support/StoreTesting.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <unordered_map>

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// `/bin/sh -c <script> sh <arguments...>` in a process group of its own, so
// that the shell and everything it starts can be ended together. Whatever
// the script starts must end by itself within a minute, in case this test
// program dies before the destructor runs (the shell itself dies with it).
class ShellGroup {
public:
    ShellGroup(const char *script, const std::vector<std::string> &arguments)
    {
        std::vector<std::string> argv = {"sh", "-c", script, "sh"};
        argv.insert(argv.end(), arguments.begin(), arguments.end());
        std::vector<char *> pointers;
        for (std::string &argument : argv)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        const pid_t parent = ::getpid();
        m_pid = ::fork();
        if (m_pid == 0) {
            ::setpgid(0, 0);
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (::getppid() != parent)
                ::_exit(127);
            ::execv("/bin/sh", pointers.data());
            ::_exit(127);
        }
        if (m_pid > 0)
            ::setpgid(m_pid, m_pid); // either side may win the race; both set the same
    }
    ~ShellGroup()
    {
        if (m_pid > 0) {
            ::kill(-m_pid, SIGKILL); // the group this test made: the shell and its children
            ::waitpid(m_pid, nullptr, 0);
        }
    }
    ShellGroup(const ShellGroup &) = delete;
    ShellGroup &operator=(const ShellGroup &) = delete;

    pid_t pid() const { return m_pid; }

private:
    pid_t m_pid = -1;
};

// The real process probe, narrowed to the descendants of this test program.
// On a shared machine the test's own ancestors belong to the same user, so
// the shells would otherwise join the lineage of whatever started the test,
// and unrelated busy processes would compete for the first place.
class DescendantsOnly final : public ProcessMetricsProbing {
public:
    explicit DescendantsOnly(std::unique_ptr<ProcessMetricsProbing> probe)
        : m_probe(std::move(probe))
    {
    }

    QList<ProcessMetric> sample(TimePoint now) override
    {
        const QList<ProcessMetric> all = m_probe->sample(now);
        std::unordered_map<pid_t, pid_t> parentOf;
        for (const ProcessMetric &process : all)
            parentOf.emplace(process.identity.pid, process.parentPID);
        const pid_t self = ::getpid();
        auto descends = [&](pid_t pid) {
            for (int depth = 0; depth < 64; ++depth) {
                const auto found = parentOf.find(pid);
                if (found == parentOf.end())
                    return false;
                if (found->second == self)
                    return true;
                pid = found->second;
            }
            return false;
        };
        QList<ProcessMetric> mine;
        for (const ProcessMetric &process : all) {
            if (descends(process.identity.pid))
                mine.append(process);
        }
        return mine;
    }

private:
    std::unique_ptr<ProcessMetricsProbing> m_probe;
};

// A copy of bash named `pytest`: the kernel names a process after the file it
// runs, so the spinner shows up as a test runner.
QString spinnerNamedPytest(const QTemporaryDir &directory)
{
    const QString path = directory.filePath(QStringLiteral("pytest"));
    if (!QFile::copy(QStringLiteral("/bin/bash"), path))
        return {};
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    return path;
}

const DashboardTask *taskWithTarget(const std::vector<DashboardTask> &tasks, const QString &name)
{
    for (const DashboardTask &task : tasks) {
        if (task.targetProcess.name == name)
            return &task;
    }
    return nullptr;
}

TEST(LoadSourceLiveTest, ShellWithASpinningTestRunnerRanksFirstAsATest)
{
    QTemporaryDir directory;
    ASSERT_TRUE(directory.isValid());
    const QString spinner = spinnerNamedPytest(directory);
    ASSERT_FALSE(spinner.isEmpty());

    // The runner spins for at most 60 s; its sibling sleeps.
    ShellGroup busy("\"$1\" -c 'while [ $SECONDS -lt 60 ]; do :; done' & sleep 60 & wait",
                    {spinner.toStdString()});
    ShellGroup quiet("sleep 60 & wait", {});
    ASSERT_GT(busy.pid(), 0);
    ASSERT_GT(quiet.pid(), 0);
    std::this_thread::sleep_for(
        std::chrono::milliseconds(300)); // let the shells start their children

    SystemMetricSampler::Probes probes = makePlatformProbes();
    probes.processProbe = std::make_unique<DescendantsOnly>(std::move(probes.processProbe));
    SystemMetricSampler sampler(std::move(probes));
    auto store = makeStoreForTesting();

    // First sample: no rates yet, so nothing is ranked.
    store->ingest(sampler.sample(TimePoint::now()));
    EXPECT_TRUE(store->allTasks().empty());
    EXPECT_EQ(store->processMetricSampleCount(), 1);

    std::this_thread::sleep_for(std::chrono::milliseconds(1000));
    store->ingest(sampler.sample(TimePoint::now()));
    const std::vector<DashboardTask> &tasks = store->allTasks();
    ASSERT_EQ(tasks.size(), 2u);

    const DashboardTask &first = tasks.front();
    EXPECT_EQ(first.targetProcess.name, QStringLiteral("pytest"));
    EXPECT_EQ(first.kind, TaskKind::test);
    EXPECT_EQ(first.application, QStringLiteral("pytest"));
    EXPECT_EQ(first.relatedProcessCount, 3); // the shell, the runner, the sleeper
    // How much CPU the spinner got depends on how busy the machine is; that it
    // got some, and more than the sleeping source, does not.
    EXPECT_GT(first.targetProcess.cpu, 0.0);
    ASSERT_EQ(first.processTree.size(), 1u);
    EXPECT_EQ(first.processTree[0].pid, busy.pid());
    EXPECT_EQ(first.processTree[0].children.size(), 2u);
    EXPECT_EQ(store->selectedTaskID(), first.id);
    EXPECT_EQ(store->selectedProcess()->name, QStringLiteral("pytest"));

    const DashboardTask *idle = taskWithTarget(tasks, QStringLiteral("sleep"));
    ASSERT_NE(idle, nullptr);
    EXPECT_EQ(idle->processTree[0].pid, quiet.pid());
    EXPECT_GT(first.cpu, idle->cpu);
}

} // namespace
