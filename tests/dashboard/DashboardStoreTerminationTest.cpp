#include "dashboard/RecoveryStart.h"
#include "sampling/Cancellation.h"
#include "support/RowName.h"
#include "support/StoreTesting.h"

#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <functional>

namespace {

using Phase = DashboardTerminationPhase;
using Signal = ProcessTerminationSignal;
using State = DashboardRecoveryState;
using IncidentStatus = DashboardIncidentStatus;

ProcessTerminationTarget targetOf(const ProcessMetric &process)
{
    return ProcessTerminationTarget{process.identity, process.userID, process.name};
}

// The node a task's tree shows for `process`, as far as a request reads it.
DashboardProcessNode makeNode(const ProcessMetric &process)
{
    DashboardProcessNode node;
    node.id = processNodeKey(process.identity.pid, process.identity.startTime);
    node.pid = process.identity.pid;
    node.name = process.name;
    return node;
}

// What the fake reader finds at the pid when the store asks.
enum class AtPid { exitsOnSignal, keepsRunning, gone, reused, refusesSignal };

// A store over a fake reader and a recording sender: no process is touched.
// "node" (A) with its child "esbuild" (B) is one load of unknown kind over
// the real grouping: the busier leaf B is its target, which the
// classification offers to no one, while A may be ended.
class StoreTermination : public ::testing::Test {
protected:
    explicit StoreTermination(std::vector<double> intervals = {0.01, 0.01})
        : controller(makeFakeTerminationController(reader, sender, std::move(intervals))),
          store(makeStoreForTesting(nullptr, 2.0, controller))
    {
    }

    void SetUp() override
    {
        ingestAt(100.0);
        ASSERT_EQ(store->allTasks().size(), 1u);
        task = store->allTasks().front();
        ASSERT_FALSE(task.canTerminate);
        nodeA = *task.processTree.front().nodeWithPID(101);
        nodeB = *task.processTree.front().nodeWithPID(202);
        ASSERT_TRUE(nodeB.isTarget);
    }

    void ingestAt(double seconds, double cpu = 80.0,
                  SystemThermalState thermal = SystemThermalState::nominal)
    {
        store->ingest(makeSample(
            {.time = seconds, .thermal = thermal, .cpu = cpu, .processes = {processA, processB}}));
    }

    void script(const ProcessMetric &process, AtPid what)
    {
        const pid_t pid = process.identity.pid;
        ProcessTerminationTarget reused = targetOf(process);
        reused.identity.startTime = secondsAt(5000.0);
        sender->setSendError(what == AtPid::refusesSignal ? EPERM : 0);
        if (what == AtPid::exitsOnSignal) // seen once more by the safety check, then gone
            reader->queueReadings(pid, {targetOf(process), std::nullopt});
        else
            reader->setReading(pid, what == AtPid::gone     ? std::nullopt
                                    : what == AtPid::reused ? std::optional(reused)
                                                            : std::optional(targetOf(process)));
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
    ProcessMetric processB = makeProcess(202, 101, QStringLiteral("esbuild"), 80.0);
    DashboardTask task;
    DashboardProcessNode nodeA;
    DashboardProcessNode nodeB;
};

// Ingest follows what changed (tasks kept by source, offered nodes by
// record); after each step of a script it holds the tasks of a store that
// forgets all it kept before each sample (stopping does), and offers what a
// store that sees that sample alone offers: what is in it and passes the
// controller's record rules (tested there; pid 1 never does).
TEST_F(StoreTermination, HoldsAfterEachSampleWhatAStoreRecomputingEverythingHolds)
{
    auto fresh = makeStoreForTesting(nullptr, 2.0, controller);
    fresh->ingest(makeSample({.time = 100.0, .cpu = 80.0, .processes = {processA, processB}}));
    QList<ProcessMetric> list = {makeProcess(1, 0, "bash"), processA, processB};
    list << makeProcess(300, 2, "runner", 5.0) << makeProcess(301, 300, "worker")
         << makeProcess(302, 300, "helper");
    const auto nothing = [](auto &) {};
    using Step = std::pair<const char *, std::function<void(QList<ProcessMetric> &)>>;
    const Step steps[] = {
        {"all arrive", nothing},
        {"nothing ran", nothing},
        {"a rate moved", [](auto &tick) { tick[2].cpuPercent = 20.0; }},
        {"memory moved", [](auto &tick) { tick[3].residentBytes *= 3; }},
        {"disk moved", [](auto &tick) { tick[4].diskBytesPerSecond = 1e6; }},
        {"a minute passed",
         [](auto &tick) { std::ranges::for_each(tick, [](auto &p) { p.duration += 60.0; }); }},
        {"the first duration leads", [](auto &tick) { tick[3].duration = 0.0; }},
        {"it is no number", [](auto &tick) { tick[3].duration = std::nan(""); }},
        {"the other worker is busier", [](auto &tick) { tick[5].cpuPercent = 150.0; }},
        // The target stays 8 s, then moves while the records stay.
        {"2 s on", nothing},
        {"4 s on", nothing},
        {"6 s on", nothing},
        {"8 s on", nothing},
        {"an exec", [](auto &tick) { tick[4].name = tick[4].identity.executablePath = "cc1plus"; }},
        {"a command changed its kind", [](auto &tick) { tick[4].command.command = "pytest -q"; }},
        {"a project appeared", [](auto &tick) { tick[4].command.project = "kiln"; }},
        {"and went", [](auto &tick) { tick[4].command.project.reset(); }},
        {"an application", [](auto &tick) { tick[3].applicationPath = "/a/b.desktop"; }},
        {"its name changed its kind", [](auto &tick) { tick[3].applicationName = "Firefox"; }},
        {"a parent within the source changed", [](auto &tick) { tick[5].parentPID = 301; }},
        {"a parent changed", [](auto &tick) { tick[4].parentPID = 1; }},
        {"a name became protected", [](auto &tick) { tick[2].name = "KWin_Wayland"; }},
        {"a process left", [](auto &tick) { tick.removeAt(5); }},
        {"a pid was reused", [](auto &tick) { tick[1].identity.startTime = secondsAt(9000.0); }},
        {"a process arrived", [](auto &tick) { tick.append(makeProcess(400, 1, "vite", 30.0)); }},
        {"reversed, two less", [](auto &tick) { tick = QList(tick.rbegin(), tick.rend() - 2); }},
        {"back in order", [](auto &tick) { std::reverse(tick.begin(), tick.end()); }},
    };
    double time = 100.0;
    QList<ProcessMetric> seen;
    for (const auto &[name, change] : steps) {
        change(list);
        seen += list;
        const SystemMetricSample sample = makeSample({.time = time += 2, .processes = list});
        store->ingest(sample);
        fresh->stopMonitoring();
        fresh->ingest(sample);
        EXPECT_EQ(store->allTasks(), fresh->allTasks()) << name;
        EXPECT_EQ(store->selectedTaskID(), fresh->selectedTaskID()) << name;
        EXPECT_EQ(store->selectedProcessID(), fresh->selectedProcessID()) << name;
        auto alone = makeStoreForTesting(nullptr, 2.0, controller);
        alone->ingest(sample);
        for (const ProcessMetric &process : seen) {
            store->requestTermination(task, makeNode(process));
            alone->requestTermination(task, makeNode(process));
            EXPECT_EQ(store->pendingTerminationTarget(), alone->pendingTerminationTarget())
                << name << " " << process.identity.pid;
            EXPECT_TRUE(process.identity.pid != 1 || !store->pendingTermination()) << name;
            store->cancelTermination();
            alone->cancelTermination();
        }
    }
}

struct Outcome {
    const char *name;
    std::vector<AtPid> attempts; // one per confirmation, graceful then forced
    const char *verifying;       // the message while the last wait runs; none unsent
    Phase phase;
    const char *message;
    State recovery;
    std::size_t signalsSent;
    IncidentStatus incident;
    bool offeredAgain;
    Signal nextMode;
};

using rows::PrintTo;

class TerminationOutcome : public StoreTermination,
                           public ::testing::WithParamInterface<Outcome> {};

// Every outcome of ending A, the selected process: its status, messages and
// recovery state, the action left in the log, and what is offered next.
// Forced is reached only through a graceful signal that A ignored; an exit
// starts a verification that a later sample judges, once.
TEST_P(TerminationOutcome, LeavesItsStatusMessageIncidentAndNextOffer)
{
    const Outcome &row = GetParam();
    store->selectProcess(nodeA.id);
    std::optional<QString> verifying;
    for (const AtPid attempt : row.attempts) {
        script(processA, attempt);
        store->requestTermination(task, nodeA);
        store->confirmTermination();
        verifying = store->terminationMessage();
        ASSERT_TRUE(waitForOutcome());
    }
    if (row.verifying)
        EXPECT_EQ(verifying, QString::fromUtf8(row.verifying));
    const Signal mode = row.attempts.size() == 2 ? Signal::forced : Signal::graceful;
    EXPECT_EQ(store->terminationMessage(), QString::fromUtf8(row.message));
    EXPECT_EQ(store->recoveryState(), row.recovery);
    ASSERT_FALSE(store->incidents().empty());
    const DashboardIncident &incident = store->incidents().front();
    EXPECT_EQ(incident.action, QStringLiteral("结束 node 子进程"));
    EXPECT_EQ(incident.status, row.incident);
    EXPECT_EQ(incident.startedAt, secondsAt(100.0)); // the latest sample's time
    if (row.incident == IncidentStatus::actionFailed)
        EXPECT_EQ(incident.endedAt, secondsAt(100.0));
    if (row.recovery == State::recovering)
        EXPECT_EQ(store->recoveryContext()->processNodeID, nodeA.id);
    EXPECT_EQ(store->canTerminateSelectedProcess(), row.offeredAgain);
    store->requestTermination(task, nodeA);
    EXPECT_EQ(store->pendingTermination()->mode, row.nextMode);
    EXPECT_FALSE(store->terminationMessage()); // a request clears the last outcome's
    store->cancelTermination();
    store->confirmTermination(); // nothing pending: neither cancel nor this touches the rest
    EXPECT_EQ(sender->sent().size(), row.signalsSent);
    EXPECT_EQ(store->selectedTerminationStatus(),
              (DashboardTerminationStatus{nodeA.id, "node", 101, mode, row.phase}));
    const State judged = row.recovery == State::recovering ? State::recovered : row.recovery;
    ingestAt(400.0, 0.0); // a failure leaves no verification to judge this
    EXPECT_EQ(store->recoveryState(), judged);
    ingestAt(402.0, 95.0); // a verdict stays
    EXPECT_EQ(store->recoveryState(), judged);
}

using A = AtPid;
const IncidentStatus observing = IncidentStatus::observing, failed = IncidentStatus::actionFailed;
const char *const sentGraceful = "node：已发送退出请求，正在确认…";
const char *const sentForced = "node：正在确认强制结束结果…";
// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, TerminationOutcome, ::testing::Values(
    Outcome{"Exits", {A::exitsOnSignal}, sentGraceful, Phase::exited, "node：进程已结束。",
            State::recovering, 1, observing, false, Signal::graceful},
    Outcome{"Gone", {A::gone}, nullptr, Phase::failed, "node：任务已经结束，无需再次操作。",
            State::terminationFailed, 0, failed, true, Signal::graceful},
    Outcome{"PidReused", {A::reused}, nullptr, Phase::failed,
            "node：任务身份已经变化，为避免误伤未发送结束信号。",
            State::terminationFailed, 0, failed, true, Signal::graceful},
    Outcome{"NoPermission", {A::refusesSignal}, nullptr, Phase::failed,
            "node：没有权限结束该任务，未进行重试。",
            State::terminationFailed, 1, failed, true, Signal::graceful},
    Outcome{"IgnoresGraceful", {A::keepsRunning}, sentGraceful, Phase::unresponsive,
            "node：进程仍在运行，可尝试强制结束。",
            State::terminationFailed, 1, failed, true, Signal::forced},
    Outcome{"ForcedEndsIt", {A::keepsRunning, A::exitsOnSignal}, sentForced, Phase::exited,
            "node：进程已强制结束。", State::recovering, 2, observing, false, Signal::graceful},
    Outcome{"ForcedFailsToo", {A::keepsRunning, A::keepsRunning}, sentForced, Phase::failed,
            "node：强制结束后进程仍在运行。",
            State::terminationFailed, 2, failed, false, Signal::graceful}),
    [](const auto &info) { return std::string(info.param.name); });
// clang-format on

// The verdict closes the incident only while the machine stayed hot, on the
// verdict's own tick, after that tick's point.
TEST_F(StoreTermination, VerdictWhileStillHotClosesTheIncidentOnTheSameTick)
{
    ingestAt(102.0, 90.0, SystemThermalState::fair);
    ASSERT_EQ(store->incidents().size(), 1u); // opened by the tick, blamed on the top task
    script(processB, AtPid::exitsOnSignal);
    endProcess(nodeB); // asked for directly: the target names the task
    ASSERT_EQ(store->incidents().size(), 1u);
    EXPECT_EQ(store->incidents().front().action,
              QStringLiteral("结束 %1 任务").arg(task.application));

    ingestAt(221.0, 10.0, SystemThermalState::fair);
    EXPECT_EQ(store->incidents().front().status, IncidentStatus::observing);
    ingestAt(222.0, 10.0, SystemThermalState::fair);
    const DashboardIncident &closed = store->incidents().front();
    EXPECT_EQ(closed.status, IncidentStatus::improved);
    EXPECT_EQ(closed.endedAt, secondsAt(222.0));
    EXPECT_EQ(closed.points.back().timestamp, secondsAt(222.0));
}

class SecondTermination : public StoreTermination, public ::testing::WithParamInterface<bool> {};

// A second termination gives up the first verification as its signal goes
// out; the context is replaced only if the second process exits.
TEST_P(SecondTermination, DropsTheFirstVerificationWhenItsSignalGoesOut)
{
    const bool secondExits = GetParam();
    script(processA, AtPid::exitsOnSignal);
    endProcess(nodeA);
    ASSERT_EQ(store->recoveryState(), State::recovering);
    const auto firstContext = store->recoveryContext();

    ingestAt(102.0);
    script(processB, secondExits ? AtPid::exitsOnSignal : AtPid::keepsRunning);
    store->requestTermination(task, nodeB);
    store->confirmTermination();
    ingestAt(300.0); // far past the first window: nothing is judged during the wait
    EXPECT_EQ(store->recoveryState(), State::recovering);
    EXPECT_EQ(store->recoveryContext(), firstContext);
    ASSERT_TRUE(waitForOutcome());
    if (secondExits) {
        EXPECT_EQ(store->recoveryContext()->processNodeID, nodeB.id);
        EXPECT_EQ(store->recoveryState(), State::recovering);
    } else {
        EXPECT_EQ(store->recoveryContext(), firstContext);
        EXPECT_EQ(store->recoveryState(), State::terminationFailed);
    }
}

INSTANTIATE_TEST_SUITE_P(Outcomes, SecondTermination, ::testing::Bool());

class SlowExitCheck : public StoreTermination {
protected:
    SlowExitCheck() : StoreTermination({0.2, 0.2, 0.2}) {}
};

// The wait runs off the store's thread: confirm returns while the process
// is still there, ingest goes on, and the exit that happens afterwards is
// what the wait reports. Meanwhile no other process may be ended.
TEST_F(SlowExitCheck, ConfirmReturnsBeforeTheExitAndBlocksOtherEndings)
{
    EXPECT_FALSE(store->canTerminateSelectedProcess()); // the target of an unknown kind
    store->selectProcess(nodeA.id);
    EXPECT_TRUE(store->canTerminateSelectedProcess());

    script(processB, AtPid::keepsRunning);
    store->requestTermination(task, nodeB);
    store->confirmTermination();
    EXPECT_EQ(store->terminationStatus()->phase, Phase::verifying);
    EXPECT_FALSE(store->canTerminateSelectedProcess());
    EXPECT_FALSE(store->selectedTerminationStatus()); // not the selected one's
    ingestAt(102.0);
    EXPECT_EQ(store->latestSystemSample()->timestamp, secondsAt(102.0));

    reader->setReading(processB.identity.pid, std::nullopt);
    ASSERT_TRUE(waitForOutcome());
    EXPECT_EQ(store->terminationStatus()->phase, Phase::exited);
    EXPECT_TRUE(store->canTerminateSelectedProcess());
    // The baseline is the sample before the signal, not one that came during the wait.
    EXPECT_EQ(store->recoveryContext()->startedAt, secondsAt(100.0));
}

class LongExitCheck : public StoreTermination {
protected:
    LongExitCheck() : StoreTermination({30.0}) {}
};

TEST_F(LongExitCheck, DestroyingTheStoreEndsTheWaitWithoutDelivering)
{
    script(processA, AtPid::keepsRunning);
    store->requestTermination(task, nodeA);
    store->confirmTermination();
    const double started = continuousClockSeconds();
    store.reset(); // cancels and joins the 30 s wait
    EXPECT_LT(continuousClockSeconds() - started, 10.0);
    // Nothing is delivered to the store that has gone (the sanitizer build
    // would see a use after free).
    QCoreApplication::processEvents();
}

// Through the store a target always comes with a sample; the context of a
// start with one is checked above and on the operation panel.
TEST(RecoveryStartAfterExit, NothingToCompareWithoutABaseline)
{
    EXPECT_EQ(RecoveryStart::afterExit({}, std::nullopt),
              (RecoveryStart{State::insufficientData, std::nullopt, std::nullopt}));
}

} // namespace
