#include "sampling/MetricSampleHistory.h"

#include <gtest/gtest.h>

namespace {

SystemMetricSample at(double seconds)
{
    SystemMetricSample sample;
    sample.timestamp = TimePoint::fromSecondsSince1970(seconds);
    return sample;
}

std::vector<double> times(const std::vector<SystemMetricSample> &samples)
{
    std::vector<double> result;
    for (const auto &sample : samples)
        result.push_back(sample.timestamp.secondsSince1970);
    return result;
}

TEST(MetricSampleHistoryAppend, PrunesAgainstTheNewSampleTime)
{
    MetricSampleHistory history(3600.0);
    history.append(at(1000.0));
    history.append(at(4600.0)); // exactly 3600 s later: the first stays
    EXPECT_EQ(history.samples().size(), 2u);
    history.append(at(4600.001)); // now the first is 3600.001 s old
    ASSERT_EQ(history.samples().size(), 2u);
    EXPECT_EQ(history.samples().front().timestamp.secondsSince1970, 4600.0);
}

TEST(MetricSampleHistoryAppend, AClockJumpBeyondTheReachLeavesOnlyTheNewSample)
{
    MetricSampleHistory history(3600.0);
    for (int i = 0; i < 10; ++i)
        history.append(at(1000.0 + 2 * i));
    history.append(at(1000.0 + 20 + 3601.0));
    EXPECT_EQ(times({history.samples().begin(), history.samples().end()}),
              std::vector<double>{4621.0});
}

TEST(MetricSampleHistoryWindow, ThinsToWholeSamplesAtAStrideAndKeepsTheLast)
{
    struct Row {
        int kept;
        std::size_t expectedCount;
        int expectedStride;
    };
    for (const Row row :
         {Row{1, 1, 1}, {360, 360, 1}, {361, 181, 2}, {1800, 361, 5}, {1801, 301, 6}}) {
        SCOPED_TRACE(row.kept);
        MetricSampleHistory history(1e9);
        for (int i = 0; i < row.kept; ++i)
            history.append(at(i));
        const auto result = history.recentSamples(1e8);
        ASSERT_EQ(result.size(), row.expectedCount);
        for (std::size_t i = 0; i + 1 < result.size(); ++i)
            EXPECT_EQ(result[i].timestamp.secondsSince1970, double(i * row.expectedStride));
        EXPECT_EQ(result.back().timestamp.secondsSince1970, row.kept - 1.0);
    }
}

TEST(MetricSampleHistoryWindow, AnchoredOnTheNewestSampleNotThePresent)
{
    MetricSampleHistory history(3600.0);
    for (int i = 0; i <= 100; ++i)
        history.append(at(1000.0 + 2 * i)); // newest at 1200
    const auto recent = history.recentSamples(60.0);
    EXPECT_EQ(recent.front().timestamp.secondsSince1970, 1140.0); // at the start: kept
    EXPECT_EQ(recent.back().timestamp.secondsSince1970, 1200.0);
    EXPECT_EQ(recent.size(), 31u);
    EXPECT_TRUE(MetricSampleHistory().recentSamples(60.0).empty());
}

TEST(MetricSampleHistoryAppend, KeepsEveryReadingButNotTheProcessList)
{
    MetricSampleHistory history;
    SystemMetricSample sample = at(10.0);
    sample.cpuUsage = SensorReading<double>::available(42.0, "cpu");
    sample.memoryUsage = SensorReading<SystemMemoryUsage>::available({1, 2}, "mem");
    sample.processMetrics.append(ProcessMetric{});
    history.append(sample);
    SystemMetricSample expected = sample;
    expected.processMetrics.clear();
    EXPECT_EQ(history.samples().back(), expected);
    // Nothing of the list stays behind, not even its buffer, though the
    // caller's copy still shares it.
    EXPECT_EQ(history.samples().back().processMetrics.capacity(), 0);
    EXPECT_EQ(sample.processMetrics.size(), 1);
}

} // namespace
