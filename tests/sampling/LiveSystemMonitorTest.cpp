#include "sampling/LiveSystemMonitor.h"
#include "sampling/Cancellation.h"
#include "support/FakeProbes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

TEST(LiveSystemMonitor, FirstSampleComesAtOnceWithRatesWarmingUp)
{
    auto log = std::make_shared<ProbeCallLog>();
    LiveSystemMonitor monitor(makeFakeSampler(log), 5.0);
    const auto start = Clock::now();
    auto stream = monitor.samples();
    const auto first = stream->next();
    ASSERT_TRUE(first);
    EXPECT_LT(secondsSince(start), 1.0); // not after the 5-second interval
    EXPECT_EQ(first->cpuUsage, SensorReading<double>::warmingUp());
    EXPECT_EQ(first->diskBytesPerSecond, SensorReading<double>::warmingUp());
    EXPECT_EQ(first->networkThroughput, SensorReading<NetworkThroughput>::warmingUp());
}

TEST(LiveSystemMonitor, SpacingIsTheIntervalPlusTheTickDuration)
{
    auto log = std::make_shared<ProbeCallLog>();
    // Eight probe calls of 10 ms: each tick takes about 80 ms.
    log->onEveryCall = [] { std::this_thread::sleep_for(10ms); };
    LiveSystemMonitor monitor(makeFakeSampler(log), 0.2);
    auto stream = monitor.samples();
    std::vector<double> times;
    for (int i = 0; i < 4; ++i)
        times.push_back(stream->next()->timestamp.secondsSince1970);
    for (std::size_t i = 1; i < times.size(); ++i) {
        const double spacing = times[i] - times[i - 1];
        EXPECT_GE(spacing, 0.27);
        EXPECT_LT(spacing, 0.6);
    }
}

TEST(LiveSystemMonitor, TerminatingEndsTheProducerWithinOneSleep)
{
    auto log = std::make_shared<ProbeCallLog>();
    LiveSystemMonitor monitor(makeFakeSampler(log), 30.0);
    auto stream = monitor.samples();
    ASSERT_TRUE(stream->next());
    const auto start = Clock::now();
    stream->terminate();
    while (!stream->isFinished() && secondsSince(start) < 5.0)
        std::this_thread::sleep_for(1ms);
    EXPECT_TRUE(stream->isFinished());
    EXPECT_LT(secondsSince(start), 1.0); // the 30-second sleep was cut short
    EXPECT_EQ(log->count("process"), 1u);
    EXPECT_FALSE(stream->next()); // the stream has ended
}

TEST(LiveSystemMonitor, ASampleOfATickRunningAtTerminationIsDropped)
{
    auto log = std::make_shared<ProbeCallLog>();
    std::atomic<bool> slow{false};
    log->onEveryCall = [&] {
        if (slow)
            std::this_thread::sleep_for(30ms);
    };
    LiveSystemMonitor monitor(makeFakeSampler(log), 0.01);
    auto stream = monitor.samples();
    ASSERT_TRUE(stream->next());
    slow = true;
    std::this_thread::sleep_for(50ms); // a slow tick is now under way
    stream->terminate();
    const std::size_t callsAtStop = log->count("process");
    while (!stream->isFinished())
        std::this_thread::sleep_for(1ms);
    EXPECT_TRUE(stream->takeAll().empty());
    // At most the tick in progress completes; no new tick starts.
    EXPECT_LE(log->count("process"), callsAtStop + 1);
}

TEST(LiveSystemMonitor, RestartKeepsTheRateProbesSnapshots)
{
    auto log = std::make_shared<ProbeCallLog>();
    LiveSystemMonitor monitor(makeFakeSampler(log), 10.0);
    {
        auto stream = monitor.samples();
        EXPECT_EQ(stream->next()->cpuUsage, SensorReading<double>::warmingUp());
    }
    auto again = monitor.samples();
    const auto first = again->next();
    ASSERT_TRUE(first);
    // No second warm-up: the probes, and their snapshots, are the same ones.
    EXPECT_TRUE(first->cpuUsage.isAvailable());
    EXPECT_TRUE(first->diskBytesPerSecond.isAvailable());
    EXPECT_TRUE(first->networkThroughput.isAvailable());
}

TEST(Cancellation, SleepRunsItsCourseOrEndsOnCancel)
{
    Cancellation running;
    auto start = Clock::now();
    EXPECT_TRUE(running.sleepFor(0.05));
    EXPECT_GE(secondsSince(start), 0.045);

    Cancellation cancelled;
    std::thread canceller([&] {
        std::this_thread::sleep_for(20ms);
        cancelled.cancel();
    });
    start = Clock::now();
    // Longer than any timer holds: clamped, not undefined, and still cancellable.
    EXPECT_FALSE(cancelled.sleepFor(1e300));
    EXPECT_LT(secondsSince(start), 2.0);
    canceller.join();
    EXPECT_FALSE(cancelled.sleepFor(1.0)); // stays cancelled
    EXPECT_TRUE(Cancellation().sleepFor(0.0));
}

} // namespace
