// Load sources over the real /proc: process groups this test starts itself,
// read by the real reader and probe, grouped, classified and ranked by the
// store. Only those groups are ever signalled.

#include "platform/PlatformFactory.h"
#include "support/ShellChild.h"
#include "support/StoreTesting.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

// The real process probe, narrowed to what this test started.
class StartedByThisProgram final : public ProcessMetricsProbing {
public:
    explicit StartedByThisProgram(std::unique_ptr<ProcessMetricsProbing> probe)
        : m_probe(std::move(probe))
    {
    }
    QList<ProcessMetric> sample(TimePoint now) override
    {
        return startedByThisProgram(m_probe->sample(now));
    }

private:
    std::unique_ptr<ProcessMetricsProbing> m_probe;
};

TEST(LoadSourceLiveTest, ShellWithASpinningTestRunnerRanksFirstAsATest)
{
    // A copy of bash named `pytest`: the kernel names a process after the
    // file it runs, so the spinner shows up as a test runner.
    QTemporaryDir directory;
    ASSERT_TRUE(directory.isValid());
    const QString spinner = directory.filePath(QStringLiteral("pytest"));
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/bash"), spinner));
    QFile::setPermissions(spinner, QFileDevice::ReadOwner | QFileDevice::ExeOwner);

    // The runner spins for at most 60 s; its sibling sleeps.
    const QByteArray here = directory.path().toLocal8Bit();
    using Session = ShellChild::Session;
    ShellChild busy(
        here, {"sh", "-c", "./pytest -c 'while [ $SECONDS -lt 60 ]; do :; done' & sleep 60 & wait"},
        Session::ownGroup);
    ShellChild quiet(here, {"sh", "-c", "sleep 60 & wait"}, Session::ownGroup);
    ASSERT_TRUE(busy.started() && quiet.started());
    std::this_thread::sleep_for(
        std::chrono::milliseconds(300)); // let the shells start their children

    SystemMetricSampler::Probes probes = makePlatformProbes();
    probes.processProbe = std::make_unique<StartedByThisProgram>(std::move(probes.processProbe));
    SystemMetricSampler sampler(std::move(probes));
    auto store = makeStoreForTesting();

    // First sample: no rates yet, so nothing is ranked.
    store->ingest(sampler.sample(TimePoint::now()));
    EXPECT_TRUE(store->allTasks().empty());

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

    const DashboardTask &idle = tasks.back();
    EXPECT_EQ(idle.targetProcess.name, QStringLiteral("sleep"));
    EXPECT_EQ(idle.processTree[0].pid, quiet.pid());
    EXPECT_GT(first.cpu, idle.cpu);
}

} // namespace
