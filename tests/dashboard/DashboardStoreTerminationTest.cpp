#include "dashboard/RecoveryStart.h"
#include "sampling/Cancellation.h"
#include "support/RowName.h"
#include "support/StoreTesting.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <cerrno>

#include <unistd.h>

namespace {

using Phase = DashboardTerminationPhase;
using Signal = ProcessTerminationSignal;
using State = DashboardRecoveryState;
using IncidentStatus = DashboardIncidentStatus;

ProcessTerminationTarget targetOf(const ProcessMetric &process)
{
    return ProcessTerminationTarget{process.identity, process.userID, process.name};
}

// A store over a fake reader and a recording sender: no process is touched.
// Processes A (the task's target) and B (its child) are in every sample.
class TerminationWorkflow : public ::testing::Test {
protected:
    explicit TerminationWorkflow(std::vector<double> intervals = {0.01, 0.01})
        : controller(makeFakeTerminationController(reader, sender, std::move(intervals))),
          store(makeStoreForTesting(nullptr, 2.0, controller))
    {
        task.id = QStringLiteral("task-node");
        task.application = QStringLiteral("Node");
        task.kind = TaskKind::developmentServer;
        task.canTerminate = true;
        task.processTree = {nodeA};
        task.processTree.front().children = {nodeB};
    }

    void ingestAt(double seconds, double cpu = 80.0)
    {
        store->ingest(makeSample({.time = seconds, .cpu = cpu, .processes = {processA, processB}}));
    }

    // What the fake reader shows at each call: the process, or nothing.
    void keepsRunning(const ProcessMetric &process)
    {
        reader->setReading(process.identity.pid, targetOf(process));
    }
    // Seen once more (by the safety check), then gone.
    void exitsOnSignal(const ProcessMetric &process)
    {
        reader->queueReadings(process.identity.pid, {targetOf(process), std::nullopt});
    }

    bool waitForOutcome()
    {
        return QTest::qWaitFor(
            [&] {
                return store->terminationStatus() &&
                       store->terminationStatus()->phase != Phase::verifying;
            },
            5000);
    }

    // Request and confirm, then wait for the outcome.
    void endProcess(const DashboardProcessNode &node)
    {
        store->requestTermination(task, node);
        ASSERT_TRUE(store->pendingTermination().has_value());
        store->confirmTermination();
        ASSERT_TRUE(waitForOutcome());
    }

    std::shared_ptr<FakeProcessIdentityReader> reader =
        std::make_shared<FakeProcessIdentityReader>();
    std::shared_ptr<RecordingSignalSender> sender = std::make_shared<RecordingSignalSender>();
    ProcessTerminationController controller;
    std::unique_ptr<DashboardStore> store;
    ProcessMetric processA = makeProcess(101, 1, QStringLiteral("node"), 60.0);
    ProcessMetric processB = makeProcess(202, 101, QStringLiteral("esbuild"), 20.0);
    DashboardProcessNode nodeA = makeNode(processA, true);
    DashboardProcessNode nodeB = makeNode(processB, false);
    DashboardTask task;
};

TEST_F(TerminationWorkflow, TargetsAreRebuiltWholeFromEverySampleByTheRecordRules)
{
    ProcessMetric otherUser = makeProcess(303, 1, QStringLiteral("node"));
    otherUser.userID = ::getuid() + 1;
    const ProcessMetric init = makeProcess(1, 0, QStringLiteral("bash"));
    const ProcessMetric self = makeProcess(::getpid(), 1, QStringLiteral("kw_tests"));
    const ProcessMetric compositor = makeProcess(404, 1, QStringLiteral("KWin_Wayland"));
    SystemMetricSample sample = makeSample(100.0); // every score 0: the warm-up sample
    sample.processMetrics = {processA, otherUser, init, self, compositor, processB};
    store->ingest(sample);

    EXPECT_EQ(store->processTerminationTargets(),
              (QHash<QString, ProcessTerminationTarget>{{nodeA.id, targetOf(processA)},
                                                        {nodeB.id, targetOf(processB)}}));

    store->ingest(makeSample({.time = 102.0, .processes = {processB}}));
    EXPECT_EQ(store->processTerminationTargets().keys(), QList<QString>{nodeB.id});
}

TEST_F(TerminationWorkflow, RequestClearsTheMessageKeepsTheStatusAndNeedsTheSampledProcess)
{
    ingestAt(100.0);
    endProcess(nodeA); // the fake reader has no process: rejected
    store->ingest(makeSample({.time = 102.0, .processes = {processA}}));
    const auto status = store->terminationStatus();
    const auto message = store->terminationMessage();
    ASSERT_TRUE(message.has_value());

    store->requestTermination(task, nodeB); // B has left the sample
    EXPECT_FALSE(store->pendingTermination().has_value());
    EXPECT_FALSE(store->pendingTerminationTarget().has_value());
    EXPECT_EQ(store->terminationMessage(), message);

    store->requestTermination(task, nodeA);
    EXPECT_FALSE(store->terminationMessage().has_value());
    EXPECT_EQ(store->pendingTermination(),
              (DashboardPendingTermination{task, nodeA, Signal::graceful}));
    EXPECT_EQ(store->pendingTerminationTarget(), targetOf(processA));
    store->cancelTermination();
    EXPECT_FALSE(store->pendingTermination().has_value());
    EXPECT_FALSE(store->pendingTerminationTarget().has_value());
    EXPECT_EQ(store->terminationStatus(), status);
}

class ForcedTermination : public TerminationWorkflow, public ::testing::WithParamInterface<bool> {};

// Forced is offered only for the node that ignored the graceful signal; a
// forced signal that does not end it either leaves nothing further to try.
TEST_P(ForcedTermination, IsOfferedOnlyForTheNodeThatIgnoredTheGracefulSignal)
{
    const bool forcedEndsIt = GetParam();
    ingestAt(100.0);
    keepsRunning(processA);
    endProcess(nodeA);
    EXPECT_EQ(store->terminationStatus(),
              (DashboardTerminationStatus{nodeA.id, QStringLiteral("node"), 101, Signal::graceful,
                                          Phase::unresponsive}));
    EXPECT_EQ(store->terminationMessage(), QStringLiteral("node：进程仍在运行，可尝试强制结束。"));
    EXPECT_EQ(store->recoveryState(), State::terminationFailed);

    store->requestTermination(task, nodeB);
    EXPECT_EQ(store->pendingTermination()->mode, Signal::graceful);
    store->requestTermination(task, nodeA);
    EXPECT_EQ(store->pendingTermination()->mode, Signal::forced);

    if (forcedEndsIt)
        exitsOnSignal(processA);
    store->confirmTermination();
    EXPECT_EQ(store->terminationMessage(), QStringLiteral("node：正在确认强制结束结果…"));
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(store->terminationStatus()->phase, forcedEndsIt ? Phase::exited : Phase::failed);
    EXPECT_EQ(store->terminationStatus()->mode, Signal::forced);
    EXPECT_EQ(store->terminationMessage(), forcedEndsIt
                                               ? QStringLiteral("node：进程已强制结束。")
                                               : QStringLiteral("node：强制结束后进程仍在运行。"));
    EXPECT_EQ(sender->sent(), (std::vector<RecordingSignalSender::Sent>{{101, Signal::graceful},
                                                                        {101, Signal::forced}}));
}

INSTANTIATE_TEST_SUITE_P(Outcomes, ForcedTermination, ::testing::Bool(), [](const auto &info) {
    return std::string(info.param ? "ForcedEndsIt" : "ForcedFailsToo");
});

struct FailureCase {
    const char *name;
    std::optional<ProcessTerminationTarget> reading;
    int sendError;
    const char *message;
    std::size_t signalsSent;
};

using rows::PrintTo;

class TerminationFailure : public TerminationWorkflow,
                           public ::testing::WithParamInterface<FailureCase> {};

// A graceful attempt that fails to send stays graceful: forced is reached
// only through a graceful signal that was ignored.
TEST_P(TerminationFailure, FailsWithTheResultTextAndStaysGraceful)
{
    const FailureCase &row = GetParam();
    ingestAt(100.0);
    reader->setReading(processB.identity.pid, row.reading);
    sender->setSendError(row.sendError);

    endProcess(nodeB);
    EXPECT_EQ(store->terminationStatus(),
              (DashboardTerminationStatus{nodeB.id, QStringLiteral("esbuild"), 202,
                                          Signal::graceful, Phase::failed}));
    EXPECT_EQ(store->terminationMessage(), QString::fromUtf8(row.message));
    EXPECT_EQ(store->recoveryState(), State::terminationFailed);
    EXPECT_FALSE(store->recoveryEvaluator().has_value());
    EXPECT_EQ(sender->sent().size(), row.signalsSent);
    // The ending leaves its action in an incident that closes at once.
    ASSERT_EQ(store->incidents().size(), 1u);
    EXPECT_EQ(store->incidents().front().action, QStringLiteral("结束 esbuild 子进程"));
    EXPECT_EQ(store->incidents().front().status, IncidentStatus::actionFailed);
    EXPECT_EQ(store->incidents().front().endedAt, secondsAt(100.0)); // the latest sample's time

    store->requestTermination(task, nodeB);
    EXPECT_EQ(store->pendingTermination()->mode, Signal::graceful);
}

ProcessTerminationTarget reusedPid()
{
    ProcessTerminationTarget later = makeTarget(202, QStringLiteral("esbuild"));
    later.identity.startTime = secondsAt(5000.0);
    return later;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TerminationFailure,
    ::testing::Values(FailureCase{"Gone", std::nullopt, 0, "esbuild：任务已经结束，无需再次操作。",
                                  0},
                      FailureCase{"PidReused", reusedPid(), 0,
                                  "esbuild：任务身份已经变化，为避免误伤未发送结束信号。", 0},
                      FailureCase{"NoPermission", makeTarget(202, QStringLiteral("esbuild")), EPERM,
                                  "esbuild：没有权限结束该任务，未进行重试。", 1}),
    RowName());

// On a quiet machine the ending opens an incident for its action, which the
// next calm tick closes before the verdict; the verdict then shows only in
// the recovery state.
TEST_F(TerminationWorkflow, ExitStartsAVerificationJudgedByLaterSamples)
{
    ingestAt(100.0, 90.0);
    ASSERT_TRUE(store->incidents().empty());
    exitsOnSignal(processB);
    store->requestTermination(task, nodeB);
    store->confirmTermination();
    EXPECT_EQ(store->terminationMessage(), QStringLiteral("esbuild：已发送退出请求，正在确认…"));
    ASSERT_TRUE(waitForOutcome());

    EXPECT_EQ(store->terminationStatus()->phase, Phase::exited);
    EXPECT_EQ(store->terminationMessage(), QStringLiteral("esbuild：进程已结束。"));
    EXPECT_EQ(store->recoveryState(), State::recovering);
    ASSERT_TRUE(store->recoveryContext().has_value());
    EXPECT_EQ(store->recoveryContext()->processNodeID, nodeB.id);
    EXPECT_EQ(store->recoveryContext()->baseline.cpu, 90.0);
    ASSERT_EQ(store->incidents().size(), 1u);
    const DashboardIncident opened = store->incidents().front();
    EXPECT_EQ(opened.startedAt, secondsAt(100.0)); // the baseline's time
    EXPECT_EQ(opened.application, QStringLiteral("Node"));
    EXPECT_EQ(opened.actionAt, secondsAt(100.0));
    EXPECT_EQ(opened.status, IncidentStatus::observing);

    ingestAt(219.0, 10.0);
    EXPECT_EQ(store->recoveryState(), State::recovering);
    EXPECT_EQ(store->incidents().front().status, IncidentStatus::recoveredWithoutAction);
    ingestAt(220.0, 10.0); // 120 s after the baseline, CPU down by 80 points
    EXPECT_EQ(store->recoveryState(), State::recovered);
    EXPECT_FALSE(store->recoveryEvaluator().has_value());
    ingestAt(222.0, 95.0); // a finished verdict stays
    EXPECT_EQ(store->recoveryState(), State::recovered);
}

TEST_F(TerminationWorkflow, ConfirmWithoutARequestChangesNothing)
{
    ingestAt(100.0);
    QSignalSpy changed(store.get(), &DashboardStore::changed);
    store->confirmTermination();
    EXPECT_EQ(changed.count(), 0);
    EXPECT_TRUE(sender->pinned().empty());
}

class SecondTermination : public TerminationWorkflow, public ::testing::WithParamInterface<bool> {};

// One termination at a time from the page's side, but a second one that the
// store is asked for gives up the first verification as its signal goes out;
// the context is replaced only if the second process exits.
TEST_P(SecondTermination, DropsTheFirstVerificationWhenItsSignalGoesOut)
{
    const bool secondExits = GetParam();
    ingestAt(100.0);
    exitsOnSignal(processA);
    endProcess(nodeA);
    ASSERT_EQ(store->recoveryState(), State::recovering);
    const auto firstContext = store->recoveryContext();

    ingestAt(102.0);
    if (secondExits)
        exitsOnSignal(processB);
    else
        keepsRunning(processB);
    store->requestTermination(task, nodeB);
    store->confirmTermination();
    EXPECT_FALSE(store->recoveryEvaluator().has_value());
    EXPECT_EQ(store->recoveryState(), State::recovering);
    EXPECT_EQ(store->recoveryContext(), firstContext);
    ingestAt(300.0); // far past the first window: nothing is judged during the wait
    EXPECT_EQ(store->recoveryState(), State::recovering);
    ASSERT_TRUE(waitForOutcome());

    if (secondExits) {
        EXPECT_EQ(store->recoveryContext()->processNodeID, nodeB.id);
        EXPECT_EQ(store->recoveryContext()->startedAt, secondsAt(102.0));
        EXPECT_EQ(store->recoveryState(), State::recovering);
    } else {
        EXPECT_EQ(store->recoveryContext(), firstContext);
        EXPECT_EQ(store->recoveryState(), State::terminationFailed);
    }
}

INSTANTIATE_TEST_SUITE_P(Outcomes, SecondTermination, ::testing::Bool(), [](const auto &info) {
    return std::string(info.param ? "SecondExits" : "SecondStays");
});

// Over the real grouping and selection: "node" with its child "esbuild" is
// one load of unknown kind, so the classification offers its target to no
// one, while the other process of the tree may be ended.
class SelectedProcessAction : public TerminationWorkflow {
protected:
    void SetUp() override
    {
        ingestAt(100.0);
        ingestAt(102.0);
        ASSERT_EQ(store->allTasks().size(), 1u);
        shown = store->allTasks().front();
        ASSERT_FALSE(shown.canTerminate);
        const DashboardProcessNode &root = shown.processTree.front();
        ASSERT_TRUE(root.nodeWithPID(target.identity.pid) && root.nodeWithPID(other.identity.pid));
        targetNode = *root.nodeWithPID(target.identity.pid);
        otherNode = *root.nodeWithPID(other.identity.pid);
        ASSERT_TRUE(targetNode.isTarget); // the busier leaf
        ASSERT_EQ(store->selectedProcess(), targetNode);
    }

    DashboardTask shown;
    const ProcessMetric &target = processB;
    const ProcessMetric &other = processA;
    DashboardProcessNode targetNode;
    DashboardProcessNode otherNode;
};

TEST_F(SelectedProcessAction, FollowsTheSelectionAndOneRunAtATime)
{
    EXPECT_FALSE(store->canTerminateSelectedProcess()); // the target of an unknown kind
    store->selectProcess(otherNode.id);
    EXPECT_TRUE(store->canTerminateSelectedProcess()); // another process of its tree

    // A run for the target (asked for directly) in `verifying` blocks the
    // action for the other process too.
    keepsRunning(target);
    store->requestTermination(shown, targetNode);
    store->confirmTermination();
    EXPECT_FALSE(store->canTerminateSelectedProcess());
    EXPECT_FALSE(store->selectedTerminationStatus().has_value()); // not the selected one's
    ASSERT_TRUE(waitForOutcome());
    EXPECT_TRUE(store->canTerminateSelectedProcess());

    // It ignores the graceful signal: forced is still on offer; then the
    // forced one fails too and nothing further is offered.
    keepsRunning(other);
    store->requestTermination(shown, otherNode);
    store->confirmTermination();
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(store->selectedTerminationStatus()->phase, Phase::unresponsive);
    EXPECT_TRUE(store->canTerminateSelectedProcess());
    store->requestTermination(shown, otherNode);
    store->confirmTermination();
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(store->selectedTerminationStatus()->mode, Signal::forced);
    EXPECT_FALSE(store->canTerminateSelectedProcess());
}

TEST_F(SelectedProcessAction, ExitedIsNotOfferedAgainButAFailedGracefulAttemptIs)
{
    store->selectProcess(otherNode.id);
    reader->setReading(other.identity.pid, std::nullopt); // gone: rejected, graceful
    endProcess(otherNode);
    EXPECT_EQ(store->selectedTerminationStatus()->phase, Phase::failed);
    EXPECT_TRUE(store->canTerminateSelectedProcess());

    exitsOnSignal(other);
    store->requestTermination(shown, otherNode);
    store->confirmTermination();
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(store->selectedTerminationStatus()->phase, Phase::exited);
    EXPECT_FALSE(store->canTerminateSelectedProcess());
}

class SlowExitCheck : public TerminationWorkflow {
protected:
    SlowExitCheck() : TerminationWorkflow({0.2, 0.2, 0.2}) {}
};

// The wait runs off the store's thread: confirm returns while the process
// is still there, ingest goes on, and the exit that happens afterwards is
// what the wait reports. Had confirm waited in place, it would have found
// the process running for the whole schedule.
TEST_F(SlowExitCheck, ConfirmReturnsBeforeTheExitAndIngestGoesOn)
{
    ingestAt(100.0);
    keepsRunning(processA);
    store->requestTermination(task, nodeA);
    store->confirmTermination();
    EXPECT_EQ(store->terminationStatus()->phase, Phase::verifying);

    ingestAt(102.0);
    EXPECT_EQ(store->latestSystemSample()->timestamp, secondsAt(102.0));
    EXPECT_EQ(store->terminationStatus()->phase, Phase::verifying);

    reader->setReading(processA.identity.pid, std::nullopt);
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(store->terminationStatus()->phase, Phase::exited);
    // The baseline is the sample before the signal, not one that came during the wait.
    EXPECT_EQ(store->recoveryContext()->startedAt, secondsAt(100.0));
}

class LongExitCheck : public TerminationWorkflow {
protected:
    LongExitCheck() : TerminationWorkflow({30.0}) {}
};

TEST_F(LongExitCheck, DestroyingTheStoreEndsTheWaitWithoutDelivering)
{
    ingestAt(100.0);
    keepsRunning(processA);
    store->requestTermination(task, nodeA);
    store->confirmTermination();
    const double started = continuousClockSeconds();
    store.reset(); // cancels and joins the 30 s wait
    EXPECT_LT(continuousClockSeconds() - started, 10.0);
    // Nothing is delivered to the store that has gone (the sanitizer build
    // would see a use after free).
    QCoreApplication::processEvents();
}

// The verdict closes the incident only while the machine stayed hot.
TEST_F(TerminationWorkflow, VerdictWhileStillHotClosesTheIncidentOnTheSameTick)
{
    auto ingestHot = [&](double seconds, double cpu) {
        store->ingest(makeSample({.time = seconds,
                                  .thermal = SystemThermalState::fair,
                                  .cpu = cpu,
                                  .processes = {processA, processB}}));
    };
    ingestHot(100.0, 90.0);
    ASSERT_EQ(store->incidents().size(), 1u); // opened by the tick, blamed on the top task
    exitsOnSignal(processA);
    endProcess(nodeA);
    ASSERT_EQ(store->incidents().size(), 1u); // the action goes to the open incident
    EXPECT_EQ(store->incidents().front().action, QStringLiteral("结束 Node 任务"));

    ingestHot(219.0, 10.0);
    EXPECT_EQ(store->incidents().front().status, IncidentStatus::observing);
    ingestHot(220.0, 10.0);
    EXPECT_EQ(store->recoveryState(), State::recovered);
    const DashboardIncident &closed = store->incidents().front();
    EXPECT_EQ(closed.status, IncidentStatus::improved);
    EXPECT_EQ(closed.endedAt, secondsAt(220.0));
    ASSERT_EQ(closed.points.size(), 3u); // the verdict's tick left its point first
    EXPECT_EQ(closed.points.back().timestamp, secondsAt(220.0));
}

TEST(RecoveryStartAfterExit, BaselineFromTheLatestSampleOrNothingToCompare)
{
    const DashboardPendingTermination ended{makeTask("Vite"), makeNode(makeProcess(7, 1, "vite")),
                                            Signal::graceful};
    EXPECT_EQ(RecoveryStart::afterExit(ended, std::nullopt),
              (RecoveryStart{State::insufficientData, std::nullopt, std::nullopt}));
    const SystemMetricSample baseline = makeSample({.time = 500.0, .cpu = 70.0, .fan = 2400.0});
    const DashboardRecoveryMetrics metrics{70.0, std::nullopt, 2400.0, SystemThermalState::nominal};
    const DashboardRecoveryContext context{"id-Vite",          "Vite", ended.process.id, "vite", 7,
                                           baseline.timestamp, 120.0,  metrics};
    EXPECT_EQ(RecoveryStart::afterExit(ended, baseline),
              (RecoveryStart{State::recovering, context,
                             RecoveryEvaluator{baseline, baseline.timestamp, 120.0}}));
}

} // namespace
