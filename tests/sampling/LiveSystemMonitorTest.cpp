#include "sampling/LiveSystemMonitor.h"
#include "sampling/Cancellation.h"
#include "support/FakeProbes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <mutex>
#include <thread>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Only a guard against a hang: nothing here is compared with a time the
// machine would have to keep to.
constexpr auto kHangGuard = 30s;

// Waits for the producer to end, at most the guard.
bool finishes(const SampleStream &stream)
{
    const auto deadline = Clock::now() + kHangGuard;
    while (!stream.isFinished() && Clock::now() < deadline)
        std::this_thread::sleep_for(1ms);
    return stream.isFinished();
}

// The first sample comes before any sleep, and terminating cuts the sleep
// short: with an interval far beyond the guard, a monitor that slept first
// would deliver nothing in time, and the producer could only have finished by
// being woken.
TEST(LiveSystemMonitor, FirstSampleComesAtOnceAndTerminatingCutsTheSleepShort)
{
    auto log = std::make_shared<ProbeCallLog>();
    std::promise<void> ready;
    LiveSystemMonitor monitor(makeFakeSampler(log), 3600.0);
    auto stream = monitor.samples([&, once = std::make_shared<std::once_flag>()] {
        std::call_once(*once, [&] { ready.set_value(); });
    });
    ASSERT_EQ(ready.get_future().wait_for(kHangGuard), std::future_status::ready);
    const auto first = stream->next();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->cpuUsage, SensorReading<double>::warmingUp()); // not sampled twice
    stream->terminate();
    ASSERT_TRUE(finishes(*stream));
    EXPECT_EQ(log->count("process"), 1u);
    EXPECT_FALSE(stream->next()); // the stream has ended
}

// The wait is taken after each sample is handed over: from the hand-over to
// the next tick's start is at least the interval, however long the tick took
// (a fixed rate would start the next tick one tick's length early).
TEST(LiveSystemMonitor, NextTickStartsAnIntervalAfterTheHandOver)
{
    auto log = std::make_shared<ProbeCallLog>();
    log->onEveryCall = [] { std::this_thread::sleep_for(10ms); }; // ticks of 80 ms or more
    std::mutex mutex;
    std::vector<Clock::time_point> starts, handOvers;
    const auto now = [&](std::vector<Clock::time_point> &times) {
        std::lock_guard lock(mutex);
        times.push_back(Clock::now());
    };
    LiveSystemMonitor monitor(makeFakeSampler(log), 0.2, [&] {
        now(starts);
        return TimePoint::now();
    });
    auto stream = monitor.samples([&] { now(handOvers); });
    for (int i = 0; i < 4; ++i)
        ASSERT_TRUE(stream->next());
    stream->terminate();
    std::lock_guard lock(mutex);
    ASSERT_TRUE(starts.size() >= 4 && handOvers.size() >= 3);
    for (std::size_t i = 1; i < 4; ++i)
        EXPECT_GE(std::chrono::duration<double>(starts[i] - handOvers[i - 1]).count(), 0.2 - 1e-3);
}

// A tick under way when the stream is terminated finishes, but its sample is
// dropped and no further tick starts.
TEST(LiveSystemMonitor, ASampleOfATickRunningAtTerminationIsDropped)
{
    auto log = std::make_shared<ProbeCallLog>();
    std::atomic<bool> armed{false};
    std::promise<void> inTick, release;
    std::shared_future<void> released = release.get_future().share();
    log->onEveryCall = [&] {
        if (armed.exchange(false)) {
            inTick.set_value();
            released.wait_for(kHangGuard);
        }
    };
    LiveSystemMonitor monitor(makeFakeSampler(log), 0.01);
    auto stream = monitor.samples();
    ASSERT_TRUE(stream->next());
    armed = true;
    ASSERT_EQ(inTick.get_future().wait_for(kHangGuard), std::future_status::ready);
    stream->terminate();
    const std::size_t callsAtStop = log->count("process");
    release.set_value();
    ASSERT_TRUE(finishes(*stream));
    EXPECT_TRUE(stream->takeAll().empty());
    EXPECT_LE(log->count("process"), callsAtStop + 1);
}

TEST(Cancellation, SleepRunsItsCourseOrEndsOnCancel)
{
    Cancellation running;
    const auto start = Clock::now();
    EXPECT_TRUE(running.sleepFor(0.05));
    EXPECT_GE(Clock::now() - start, 45ms);

    // Longer than any timer holds: clamped, not undefined, and still
    // cancellable (returning at all shows the cancel ended it).
    Cancellation cancelled;
    std::thread canceller([&] {
        std::this_thread::sleep_for(20ms);
        cancelled.cancel();
    });
    EXPECT_FALSE(cancelled.sleepFor(1e300));
    canceller.join();
    EXPECT_FALSE(cancelled.sleepFor(1.0)); // stays cancelled
    EXPECT_TRUE(Cancellation().sleepFor(0.0));
}

} // namespace
