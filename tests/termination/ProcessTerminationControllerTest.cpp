#include "dashboard/ProcessExitWaiter.h"
#include "process/ProtectedProcessNames.h"
#include "sampling/Cancellation.h"
#include "support/FakeTermination.h"
#include "support/RowName.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTest>

#include <cerrno>
#include <system_error>
#include <thread>

#include <unistd.h>

namespace {

using Rejection = ProcessTerminationRejection;

constexpr pid_t kPid = 4242;

const ProcessTerminationTarget kSeen = makeTarget(kPid, QStringLiteral("node"));
const uid_t kOtherUser = ::getuid() + 1;

// The target as first seen, with what has changed since.
struct Change {
    std::optional<pid_t> pid;
    std::optional<uid_t> user;
    const char *name = nullptr;
    std::optional<double> startTime;
    const char *executable = nullptr;
};
ProcessTerminationTarget seen(const Change &change)
{
    ProcessTerminationTarget target = kSeen;
    target.identity.pid = change.pid.value_or(kPid);
    target.userID = change.user.value_or(kSeen.userID);
    if (change.name)
        target.name = QString::fromUtf8(change.name);
    if (change.startTime)
        target.identity.startTime = TimePoint::fromSecondsSince1970(*change.startTime);
    if (change.executable)
        target.identity.executablePath = QString::fromUtf8(change.executable);
    return target;
}

struct SafetyCase {
    const char *name;
    ProcessTerminationTarget target;
    std::optional<ProcessTerminationTarget> current;
    std::optional<Rejection> expected;
    pid_t selfPID = ::getpid();
};

using rows::PrintTo;

class SafetyCheckOrder : public ::testing::TestWithParam<SafetyCase> {};

// Every row is also run through `terminate`: a rejection sends nothing, an
// accepted target gets exactly one signal.
TEST_P(SafetyCheckOrder, FirstFailingTestDecides)
{
    const SafetyCase &row = GetParam();
    auto reader = std::make_shared<FakeProcessIdentityReader>();
    auto sender = std::make_shared<RecordingSignalSender>();
    const ProcessTerminationController controller(reader, sender, ::getuid(), row.selfPID);
    reader->setReading(row.target.identity.pid, row.current);

    EXPECT_EQ(controller.check(row.target, row.current), row.expected);

    const ProcessTerminationResult result =
        controller.terminate(row.target, ProcessTerminationSignal::graceful);
    if (row.expected) {
        EXPECT_EQ(result, ProcessTerminationResult::rejected(*row.expected));
        EXPECT_TRUE(sender->sent().empty());
    } else {
        EXPECT_EQ(result, ProcessTerminationResult::signalSent(ProcessTerminationSignal::graceful));
        EXPECT_EQ(sender->sent(), (std::vector<RecordingSignalSender::Sent>{
                                      {kPid, ProcessTerminationSignal::graceful}}));
    }
}

using S = SafetyCase;
using enum ProcessTerminationRejection;
const double kLater = kSeen.identity.startTime.secondsSince1970 + 1e-6;
const SafetyCase kSafetyCases[] = {
    S{"AcceptsTheSameProcess", kSeen, kSeen, std::nullopt},
    // The record decides before the machine is looked at.
    S{"OtherUsersRecordWhateverTheReading", seen({.user = kOtherUser}), kSeen, notCurrentUser},
    S{"OtherUsersRecordBeforePidOne", seen({.pid = 1, .user = kOtherUser}), {}, notCurrentUser},
    S{"PidOne", seen({.pid = 1}), std::nullopt, systemCritical},
    S{"PidZero", seen({.pid = 0}), std::nullopt, systemCritical},
    S{"NegativePid", seen({.pid = -1}), std::nullopt, systemCritical},
    S{"PidOneBeforeSelf", seen({.pid = 1}), std::nullopt, systemCritical, 1},
    S{"ThisProgram", seen({.pid = ::getpid()}), seen({.pid = ::getpid()}), selfProcess},
    S{"ProtectedMacName", seen({.name = "WindowServer"}), kSeen, protectedProcess},
    S{"ProtectedLinuxName", seen({.name = "GNOME-Shell"}), kSeen, protectedProcess},
    S{"ProtectedNameBeforeExit", seen({.name = "Xorg"}), std::nullopt, protectedProcess},
    // From here on the machine now.
    S{"Gone", kSeen, std::nullopt, alreadyExited},
    S{"OwnerChangedSince", kSeen, seen({.user = kOtherUser}), notCurrentUser},
    S{"OwnerChangedBeforeIdentity", kSeen, seen({.user = kOtherUser, .startTime = 99.0}),
      notCurrentUser},
    S{"OwnerChangedBeforeProtectedName", kSeen, seen({.user = kOtherUser, .name = "sshd"}),
      notCurrentUser},
    S{"NowProtectedName", kSeen, seen({.name = "sshd"}), protectedProcess},
    S{"ProtectedNameBeforeIdentity", kSeen, seen({.name = "login", .startTime = 99.0}),
      protectedProcess},
    S{"StartTimeOneMicrosecondLater", kSeen, seen({.startTime = kLater}), identityChanged},
    S{"OtherPidInReading", kSeen, seen({.pid = kPid + 1}), identityChanged},
    S{"StartTimeBeforeExecutable", kSeen, seen({.startTime = 1.0, .executable = "/usr/bin/x"}),
      identityChanged},
    S{"OtherExecutable", kSeen, seen({.executable = "/usr/bin/node (deleted)"}), executableChanged},
    // The name takes no part beyond the protected list.
    S{"RenamedButSameProcess", kSeen, seen({.name = "node-worker"}), std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Rows, SafetyCheckOrder, ::testing::ValuesIn(kSafetyCases), RowName());

// Lower-cased, exact names only: a prefix or a longer name is not protected.
TEST(ProtectedProcessNames, ExactNamesInAnyCase)
{
    for (const char *name : {"launchd", "WindowServer", "systemd", "Xwayland", "SSHD"})
        EXPECT_TRUE(isTerminationProtectedName(QString::fromLatin1(name))) << name;
    for (const char *name : {"systemd-foo", "sshd-session", "gdm-x", "node", ""})
        EXPECT_FALSE(isTerminationProtectedName(QString::fromLatin1(name))) << name;
}

// The record alone refuses without touching any process; an accepted target
// is pinned before it is read, and the signal goes through the pin. A kernel
// failure is reported once with its error number, never retried. Only the
// pin of a signal that went out is kept for the wait.
TEST(ProcessTermination, PinsBeforeReadingAndSendsThroughThePin)
{
    auto log = std::make_shared<TerminationCallLog>();
    auto reader = std::make_shared<FakeProcessIdentityReader>(log);
    auto sender = std::make_shared<RecordingSignalSender>(log);
    reader->setReading(kPid, kSeen);
    const auto controller = makeFakeTerminationController(reader, sender);

    EXPECT_EQ(controller.terminate(seen({.pid = 1}), ProcessTerminationSignal::forced),
              ProcessTerminationResult::rejected(Rejection::systemCritical));
    EXPECT_EQ(controller.terminate(kSeen, ProcessTerminationSignal::forced),
              ProcessTerminationResult::signalSent(ProcessTerminationSignal::forced));
    EXPECT_EQ(log->snapshot(), (std::vector<std::string>{"pin 4242", "read 4242", "send 4242 9"}));

    EXPECT_NE(controller.attempt(kSeen, ProcessTerminationSignal::graceful).pin, nullptr);
    EXPECT_EQ(controller.attempt(seen({.pid = 1}), ProcessTerminationSignal::graceful).pin,
              nullptr);

    sender->setSendError(ESRCH); // the pin of a signal that failed is not kept either
    EXPECT_EQ(controller.attempt(kSeen, ProcessTerminationSignal::graceful).pin, nullptr);
    EXPECT_EQ(controller.terminate(kSeen, ProcessTerminationSignal::graceful),
              ProcessTerminationResult::signalFailed(ESRCH));
    EXPECT_EQ(sender->sent().size(), 4u);
}

// The kernel's error picks the words; an unknown one is shown by number.
TEST(ProcessTerminationResult, SignalFailureTexts)
{
    const std::pair<int, const char *> rows[] = {
        {EPERM, "没有权限结束该任务，未进行重试。"},
        {EACCES, "没有权限结束该任务，未进行重试。"},
        {ESRCH, "任务已经结束，未进行重试。"},
        {EINVAL, "结束任务失败（系统错误 22），未进行重试。"},
    };
    for (const auto &[error, text] : rows)
        EXPECT_EQ(ProcessTerminationResult::signalFailed(error).text(), QString::fromUtf8(text));
}

// Both fakes, fresh per test; `reader` answers nothing until told.
class WaitForExit : public ::testing::Test {
protected:
    std::shared_ptr<FakeProcessIdentityReader> reader =
        std::make_shared<FakeProcessIdentityReader>();
    std::shared_ptr<RecordingSignalSender> sender = std::make_shared<RecordingSignalSender>();
    Cancellation cancellation;
};

struct WaitCase {
    const char *name;
    std::vector<double> intervals;
    int runningReadings; // readings that still show the target, then it has gone
    bool expectedStillRunning;
    int expectedReads;
};

class WaitForExitSchedule : public WaitForExit, public ::testing::WithParamInterface<WaitCase> {};

TEST_P(WaitForExitSchedule, ChecksAtOnceThenAfterEachInterval)
{
    const WaitCase &row = GetParam();
    std::vector<std::optional<ProcessTerminationTarget>> readings(row.runningReadings, kSeen);
    readings.push_back(std::nullopt);
    reader->queueReadings(kPid, readings);
    const auto controller = makeFakeTerminationController(reader, sender, row.intervals);
    EXPECT_EQ(controller.waitForExit(kSeen, cancellation), row.expectedStillRunning);
    EXPECT_EQ(reader->readCount(kPid), row.expectedReads);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WaitForExitSchedule,
    ::testing::Values(WaitCase{"GoneBeforeTheFirstCheck", {0.01, 0.01, 0.01}, 0, false, 1},
                      WaitCase{"GoneAtTheSecondCheckPoint", {0.01, 0.01, 0.01}, 2, false, 3},
                      WaitCase{"StillThereAfterAll", {0.01, 0.01, 0.01}, 10, true, 4},
                      WaitCase{"EmptyScheduleRunning", {}, 10, true, 1},
                      WaitCase{"EmptyScheduleGone", {}, 0, false, 1}),
    RowName());

TEST_F(WaitForExit, ReusedPidCountsAsExit)
{
    reader->setReading(kPid, seen({.startTime = 9999.0}));
    const auto controller = makeFakeTerminationController(reader, sender);
    EXPECT_EQ(controller.exitVerificationIntervals(),
              (std::vector<double>{0.1, 0.15, 0.25, 0.5, 1.0})); // the default schedule
    EXPECT_FALSE(controller.waitForExit(kSeen, cancellation));
    // The name does not take part in "running".
    reader->setReading(kPid, seen({.name = "renamed"}));
    EXPECT_TRUE(controller.isRunning(kSeen));
    reader->setReading(kPid, seen({.user = kOtherUser}));
    EXPECT_FALSE(controller.isRunning(kSeen));
}

TEST_F(WaitForExit, CancelledSleepCountsAsRunning)
{
    reader->setReading(kPid, kSeen);
    const auto controller = makeFakeTerminationController(reader, sender, {30.0, 30.0});
    std::thread canceller([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        cancellation.cancel();
    });
    const double started = continuousClockSeconds();
    EXPECT_TRUE(controller.waitForExit(kSeen, cancellation));
    canceller.join();
    EXPECT_LT(continuousClockSeconds() - started, 10.0); // the cancel ended the 30 s sleep
    EXPECT_EQ(reader->readCount(kPid), 1);
}

// The pin of the signalled process speaks for it when it can tell: what can
// be read at the pid (a deleted binary, a process turned unreadable) plays
// no part then. Only a pin that cannot tell leaves it to the readings.
TEST_F(WaitForExit, ThePinDecidesWhenItCanTell)
{
    const auto controller = makeFakeTerminationController(reader, sender, {0.01, 0.01});
    const std::unique_ptr<PinnedProcess> pin = sender->pin(kPid);

    sender->setPinRunning(true);
    EXPECT_TRUE(controller.waitForExit(kSeen, cancellation, pin.get()));
    EXPECT_EQ(reader->readCount(kPid), 0);

    reader->setReading(kPid, kSeen);
    sender->setPinRunning(false);
    EXPECT_FALSE(controller.isRunning(kSeen, pin.get()));
    sender->setPinRunning(std::nullopt);
    EXPECT_TRUE(controller.isRunning(kSeen, pin.get()));
}

// The waiter hands the pin to the wait, and a wait with no thread to run on
// still answers through the event loop: running, as nothing proved the exit.
TEST_F(WaitForExit, WaiterAsksThePinAndAnswersEvenWithoutAThread)
{
    reader->setReading(kPid, kSeen);
    sender->setPinRunning(false);
    const auto controller = makeFakeTerminationController(reader, sender, {0.01});

    std::optional<bool> answer;
    ProcessExitWaiter waiter;
    waiter.start(controller, kSeen, sender->pin(kPid), [&](bool running) { answer = running; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, 5000));
    EXPECT_EQ(answer, false);

    answer.reset();
    ProcessExitWaiter withoutThreads(nullptr, [](std::function<void()>) -> std::thread {
        throw std::system_error(EAGAIN, std::generic_category());
    });
    withoutThreads.start(controller, kSeen, sender->pin(kPid),
                         [&](bool running) { answer = running; });
    EXPECT_FALSE(answer.has_value()); // never inside the call
    ASSERT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, 5000));
    EXPECT_EQ(answer, true);
    EXPECT_EQ(withoutThreads.activeCount(), 0u);
}

} // namespace
