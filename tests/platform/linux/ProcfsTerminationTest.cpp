// The Linux termination path over real processes that this test starts
// itself (and over fixture trees for the reader's parsing). Nothing here
// signals a process that the test did not fork.

#include "platform/PlatformFactory.h"
#include "platform/linux/PidfdSignalSender.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcfsProcessIdentityReader.h"
#include "sampling/Cancellation.h"
#include "support/FakeTermination.h"
#include "support/Fixtures.h"
#include "support/ForkedChild.h"
#include "support/StoreTesting.h"

#include <QTest>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using Behaviour = ForkedChild::Behaviour;

// The real controller: procfs reader and pidfd sender, this user, this process.
ProcessTerminationController realController()
{
    return makeProcessTerminationController();
}

// What the user would have seen of the child.
ProcessTerminationTarget seen(const ForkedChild &child)
{
    ProcfsProcessIdentityReader reader;
    const std::optional<ProcessTerminationTarget> reading = reader.readIdentity(child.pid());
    EXPECT_TRUE(reading.has_value());
    return reading.value_or(ProcessTerminationTarget{});
}

TEST(ProcfsIdentityReader, ReadsThisProcessAsTheKernelShowsIt)
{
    ProcfsProcessIdentityReader reader;
    const auto self = reader.readIdentity(::getpid());
    ASSERT_TRUE(self.has_value());
    EXPECT_EQ(self->identity.pid, ::getpid());
    EXPECT_EQ(self->userID, ::geteuid());
    char path[4096] = {};
    ASSERT_GT(::readlink("/proc/self/exe", path, sizeof path - 1), 0);
    EXPECT_EQ(self->identity.executablePath, QString::fromUtf8(path));
    // Read twice, one process gives one equal start time.
    EXPECT_EQ(reader.readIdentity(::getpid()), self);
}

TEST(ProcfsIdentityReader, ParsesAFixtureTree)
{
    ProcfsProcessIdentityReader reader(fixturePath(QStringLiteral("identity-reader/proc")));
    const auto reading = reader.readIdentity(4242);
    ASSERT_TRUE(reading.has_value());
    EXPECT_EQ(reading->name, QStringLiteral("my (odd) tool"));
    EXPECT_EQ(reading->identity.pid, 4242);
    // A replaced binary keeps its " (deleted)", so it counts as another executable.
    EXPECT_EQ(reading->identity.executablePath, QStringLiteral("/opt/tools/bin/my tool (deleted)"));
    EXPECT_EQ(reading->identity.startTime,
              processStartTime(1700000000, 123456, systemClockTicksPerSecond()));
    struct stat info {};
    ASSERT_EQ(::stat(fixturePath(QStringLiteral("identity-reader/proc/4242")).toLocal8Bit(), &info),
              0);
    EXPECT_EQ(reading->userID, info.st_uid);
}

TEST(ProcfsIdentityReader, AnythingUnreadableGivesNothing)
{
    ProcfsProcessIdentityReader reader(fixturePath(QStringLiteral("identity-reader/proc")));
    EXPECT_FALSE(reader.readIdentity(4343).has_value()); // stat cut short
    EXPECT_FALSE(reader.readIdentity(4444).has_value()); // kernel thread: no exe
    EXPECT_FALSE(reader.readIdentity(4545).has_value()); // no such directory
    EXPECT_FALSE(reader.readIdentity(0).has_value());
    EXPECT_FALSE(reader.readIdentity(-1).has_value());
    ProcfsProcessIdentityReader noBootTime(
        fixturePath(QStringLiteral("identity-reader/proc-without-btime")));
    EXPECT_FALSE(noBootTime.readIdentity(4242).has_value());
}

TEST(ProcfsTermination, GracefulSignalEndsAProcessThatHonoursIt)
{
    ForkedChild child(Behaviour::waitsForSignals);
    ASSERT_TRUE(child.started());
    const auto target = seen(child);
    const auto controller = realController();

    EXPECT_EQ(controller.terminate(target, ProcessTerminationSignal::graceful),
              ProcessTerminationResult::signalSent(ProcessTerminationSignal::graceful));
    Cancellation cancellation;
    EXPECT_FALSE(controller.waitForExit(target, cancellation)); // a zombie is no longer running
    ASSERT_TRUE(child.reap(5.0));
    EXPECT_EQ(child.terminatingSignal(), SIGTERM);
}

TEST(ProcfsTermination, IgnoredGracefulSignalLeavesItRunningUntilForced)
{
    ForkedChild child(Behaviour::ignoresTerm);
    ASSERT_TRUE(child.started());
    const auto target = seen(child);
    const auto controller = realController();
    Cancellation cancellation;

    EXPECT_EQ(controller.terminate(target, ProcessTerminationSignal::graceful),
              ProcessTerminationResult::signalSent(ProcessTerminationSignal::graceful));
    EXPECT_TRUE(controller.waitForExit(target, cancellation)); // the whole 2 s schedule
    EXPECT_FALSE(child.reap(0.0));

    EXPECT_EQ(controller.terminate(target, ProcessTerminationSignal::forced),
              ProcessTerminationResult::signalSent(ProcessTerminationSignal::forced));
    EXPECT_FALSE(controller.waitForExit(target, cancellation));
    ASSERT_TRUE(child.reap(5.0));
    EXPECT_EQ(child.terminatingSignal(), SIGKILL);
}

// Exits about 0.17 s in: after the 0.1 s check, before the 0.25 s one. The
// wait must end there, not after the whole 2 s.
TEST(ProcfsTermination, ExitDuringTheSecondIntervalIsFoundEarly)
{
    ForkedChild child(Behaviour::exitsAfterDelay, 0.17);
    ASSERT_TRUE(child.started());
    const auto target = seen(child);
    Cancellation cancellation;
    const double started = continuousClockSeconds();
    EXPECT_FALSE(realController().waitForExit(target, cancellation));
    EXPECT_LT(continuousClockSeconds() - started, 1.0);
}

TEST(ProcfsTermination, ProcessGoneBeforeTheSignalIsAlreadyExited)
{
    for (const bool reaped : {false, true}) {
        SCOPED_TRACE(reaped ? "reaped" : "zombie");
        ForkedChild child(Behaviour::waitsForSignals);
        ASSERT_TRUE(child.started());
        const auto target = seen(child);
        // End our own child ourselves, so the controller finds it gone.
        ASSERT_EQ(::kill(child.pid(), SIGKILL), 0);
        if (reaped)
            ASSERT_TRUE(child.reap(5.0));
        else
            ASSERT_TRUE(child.waitUntilZombie(5.0));

        EXPECT_EQ(realController().terminate(target, ProcessTerminationSignal::graceful),
                  ProcessTerminationResult::rejected(ProcessTerminationRejection::alreadyExited));
    }
}

// The pin holds the process, not the number: once the pinned process has
// gone, sending through the pin fails instead of reaching the pid's next
// owner.
TEST(PidfdSignalSender, PinOutlivingItsProcessSendsNothing)
{
    ForkedChild child(Behaviour::waitsForSignals);
    ASSERT_TRUE(child.started());
    PidfdSignalSender sender;
    const std::unique_ptr<PinnedProcess> pinned = sender.pin(child.pid());
    ASSERT_TRUE(pinned);
    ASSERT_EQ(::kill(child.pid(), SIGKILL), 0);
    ASSERT_TRUE(child.reap(5.0));

    EXPECT_EQ(pinned->send(ProcessTerminationSignal::graceful), ESRCH);
}

// The store's whole road over a real process: the graceful signal ends it,
// the exit starts a verification, and made-up samples give the verdict.
TEST(ProcfsTermination, StoreVerifiesRecoveryAfterARealExit)
{
    ForkedChild child(Behaviour::waitsForSignals);
    ASSERT_TRUE(child.started());
    const ProcessTerminationTarget target = seen(child);
    ProcessMetric process;
    process.identity = target.identity;
    process.userID = target.userID;
    process.name = target.name;
    DashboardProcessNode node;
    node.id = processNodeKey(process.identity.pid, process.identity.startTime);
    node.name = process.name;
    node.pid = process.identity.pid;
    node.isTarget = true;
    DashboardTask task;
    task.id = QStringLiteral("child");
    task.application = QStringLiteral("Child");
    task.kind = TaskKind::test;
    task.canTerminate = true;
    task.processTree = {node};

    auto store = makeStoreForTesting(nullptr, 2.0, realController());
    SystemMetricSample before = makeSample(1000.0);
    before.cpuUsage = SensorReading<double>::available(90.0, QStringLiteral("test"));
    before.processMetrics = {process}; // the only process the store may end
    store->ingest(before);
    store->requestTermination(task, node);
    ASSERT_EQ(store->pendingTerminationTarget(), target);
    store->confirmTermination();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return store->terminationStatus()->phase != DashboardTerminationPhase::verifying; },
        5000));

    EXPECT_EQ(store->terminationStatus()->phase, DashboardTerminationPhase::exited);
    EXPECT_EQ(store->recoveryState(), DashboardRecoveryState::recovering);
    ASSERT_TRUE(child.reap(5.0));
    EXPECT_EQ(child.terminatingSignal(), SIGTERM);

    SystemMetricSample after = makeSample(1120.0);
    after.cpuUsage = SensorReading<double>::available(85.0, QStringLiteral("test"));
    store->ingest(after);
    EXPECT_EQ(store->recoveryState(), DashboardRecoveryState::noImprovement);
}

} // namespace
