#include "dashboard/ProcessExitWaiter.h"
#include "sampling/Cancellation.h"
#include "support/FakeTermination.h"
#include "support/FixtureTable.h"

#include <gtest/gtest.h>

#include <QTest>

#include <cerrno>
#include <map>
#include <system_error>
#include <thread>

#include <unistd.h>

namespace {

using Rejection = ProcessTerminationRejection;

constexpr pid_t kPid = 4242;

// The target as the user saw it, as `makeProcess` would have it.
const ProcessTerminationTarget kSeen{
    {kPid, TimePoint::fromSecondsSince1970(1000.0 + kPid), "/usr/bin/node"}, ::getuid(), "node"};
const uid_t kOtherUser = ::getuid() + 1;

// The target as first seen, with `changes` since: comma-separated pid=<n|self>,
// user=other, name=, start=<seconds|later> and exe=.
ProcessTerminationTarget seen(const QString &changes)
{
    ProcessTerminationTarget target = kSeen;
    for (const QString &change : changes.split(u',', Qt::SkipEmptyParts)) {
        const QString key = change.section(u'=', 0, 0), value = change.section(u'=', 1);
        if (key == u"pid")
            target.identity.pid = value == u"self" ? ::getpid() : value.toInt();
        if (key == u"user")
            target.userID = kOtherUser;
        if (key == u"name")
            target.name = value;
        if (key == u"start")
            target.identity.startTime = TimePoint::fromSecondsSince1970(
                value == u"later" ? kSeen.identity.startTime.secondsSince1970 + 1e-6
                                  : value.toDouble());
        if (key == u"exe")
            target.identity.executablePath = value;
    }
    return target;
}

// Every row is also run through `terminate`: a rejection sends nothing, an
// accepted target gets exactly one signal.
TEST(SafetyCheckOrder, FirstFailingTestDecides)
{
    using enum ProcessTerminationRejection;
    const std::map<QString, Rejection> rejections = {
        {"notCurrentUser", notCurrentUser},      {"selfProcess", selfProcess},
        {"systemCritical", systemCritical},      {"protectedProcess", protectedProcess},
        {"alreadyExited", alreadyExited},        {"identityChanged", identityChanged},
        {"executableChanged", executableChanged}};
    for (const FixtureRow &row : fixtureTable(QStringLiteral("termination-safety-checks"))) {
        SCOPED_TRACE(row.where);
        const ProcessTerminationTarget target = seen(row.text(1).value_or(QString()));
        const QString now = row.text(2).value_or(QString());
        const auto current = now == u"gone" ? std::nullopt : std::optional(seen(now));
        const auto found = rejections.find(*row.text(0));
        const auto expected =
            found == rejections.end() ? std::nullopt : std::optional(found->second);
        auto reader = std::make_shared<FakeProcessIdentityReader>();
        auto sender = std::make_shared<RecordingSignalSender>();
        const ProcessTerminationController controller(
            reader, sender, ::getuid(), row.text(3) ? row.text(3)->toInt() : ::getpid());
        reader->setReading(target.identity.pid, current);

        EXPECT_EQ(controller.check(target, current), expected);
        const ProcessTerminationResult result =
            controller.terminate(target, ProcessTerminationSignal::graceful);
        if (expected) {
            EXPECT_EQ(result, ProcessTerminationResult::rejected(*expected));
            EXPECT_TRUE(sender->sent().empty());
        } else {
            EXPECT_EQ(result,
                      ProcessTerminationResult::signalSent(ProcessTerminationSignal::graceful));
            EXPECT_EQ(sender->sent(), (std::vector<RecordingSignalSender::Sent>{
                                          {kPid, ProcessTerminationSignal::graceful}}));
        }
    }
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

    EXPECT_EQ(controller.terminate(seen("pid=1"), ProcessTerminationSignal::forced),
              ProcessTerminationResult::rejected(Rejection::systemCritical));
    EXPECT_EQ(controller.terminate(kSeen, ProcessTerminationSignal::forced),
              ProcessTerminationResult::signalSent(ProcessTerminationSignal::forced));
    EXPECT_EQ(log->snapshot(), (std::vector<std::string>{"pin 4242", "read 4242", "send 4242 9"}));

    EXPECT_NE(controller.attempt(kSeen, ProcessTerminationSignal::graceful).pin, nullptr);
    EXPECT_EQ(controller.attempt(seen("pid=1"), ProcessTerminationSignal::graceful).pin, nullptr);

    sender->setSendError(ESRCH); // the pin of a signal that failed is not kept either
    EXPECT_EQ(controller.attempt(kSeen, ProcessTerminationSignal::graceful).pin, nullptr);
    EXPECT_EQ(controller.terminate(kSeen, ProcessTerminationSignal::graceful),
              ProcessTerminationResult::signalFailed(ESRCH));
    EXPECT_EQ(sender->sent().size(), 4u);
}

// An error without words of its own is shown by its number.
TEST(ProcessTerminationResult, UnknownErrorShowsItsNumber)
{
    EXPECT_EQ(ProcessTerminationResult::signalFailed(EINVAL).text(),
              QStringLiteral("结束任务失败（系统错误 22），未进行重试。"));
}

// Both fakes, fresh per test; `reader` answers nothing until told.
class WaitForExit : public ::testing::Test {
protected:
    std::shared_ptr<FakeProcessIdentityReader> reader =
        std::make_shared<FakeProcessIdentityReader>();
    std::shared_ptr<RecordingSignalSender> sender = std::make_shared<RecordingSignalSender>();
    Cancellation cancellation;
};

TEST(WaitForExitSchedule, ChecksAtOnceThenAfterEachInterval)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("exit-wait-schedules"))) {
        std::vector<double> intervals;
        for (const QString &interval : row.text(0)->split(u',', Qt::SkipEmptyParts))
            intervals.push_back(interval.toDouble());
        auto reader = std::make_shared<FakeProcessIdentityReader>();
        std::vector<std::optional<ProcessTerminationTarget>> readings(
            row.text(1)->toInt(), seen(row.text(4).value_or(QString())));
        readings.push_back(std::nullopt);
        reader->queueReadings(kPid, readings);
        const auto controller = makeFakeTerminationController(
            reader, std::make_shared<RecordingSignalSender>(), intervals);
        Cancellation cancellation;
        EXPECT_EQ(controller.waitForExit(kSeen, cancellation), *row.text(2) == u"running")
            << row.where;
        EXPECT_EQ(reader->readCount(kPid), row.text(3)->toInt()) << row.where;
    }
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
