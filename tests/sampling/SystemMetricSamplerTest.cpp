#include "support/FakeProbes.h"

#include <gtest/gtest.h>

namespace {

TEST(SystemMetricSampler, RunsEveryProbeInOrderWithTheTickTime)
{
    auto log = std::make_shared<ProbeCallLog>();
    auto sampler = makeFakeSampler(log);
    const TimePoint now = TimePoint::fromSecondsSince1970(1234.5);
    const SystemMetricSample sample = sampler->sample(now);

    std::vector<std::string> order;
    for (const auto &call : log->snapshot()) {
        order.push_back(call.probe);
        if (call.time) { // every rate probe gets the very same point in time
            EXPECT_EQ(*call.time, now) << call.probe;
        }
    }
    EXPECT_EQ(order, (std::vector<std::string>{"sensor", "cpu", "thermal", "gpu", "disk", "memory",
                                               "network", "process"}));
    EXPECT_EQ(sample.timestamp, now);
    EXPECT_EQ(sample.cpuUsage, SensorReading<double>::warmingUp());
    EXPECT_EQ(sample.temperatureCelsius, SensorReading<double>::unsupported("no sensor"));
    EXPECT_EQ(sample.fanRPM, SensorReading<double>::unsupported("no fan"));
    sampler->sample(now); // an unsupported probe is asked again on every tick
    EXPECT_EQ(log->count("gpu"), 2u);
    EXPECT_EQ(log->count("sensor"), 2u);
}

TEST(SystemMetricSampler, TwoTicksFromTwoThreadsNeverOverlap)
{
    auto log = std::make_shared<ProbeCallLog>();
    std::atomic<int> inside{0};
    std::atomic<bool> overlapped{false};
    log->onEveryCall = [&] {
        if (inside.fetch_add(1) != 0)
            overlapped = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        inside.fetch_sub(1);
    };
    auto sampler = makeFakeSampler(log);
    const auto fiveTicks = [&] {
        for (int i = 0; i < 5; ++i)
            sampler->sample(TimePoint::now());
    };
    std::thread a(fiveTicks), b(fiveTicks);
    a.join();
    b.join();
    EXPECT_FALSE(overlapped);
    EXPECT_EQ(log->count("process"), 10u);
}

} // namespace
