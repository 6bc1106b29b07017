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

// Pruned against the new sample's time: exactly the reach old stays; a clock
// jump beyond the reach leaves only the new sample.
TEST(MetricSampleHistoryAppend, PrunesAgainstTheNewSampleTime)
{
    MetricSampleHistory history(3600.0);
    history.append(at(1000.0));
    history.append(at(1002.0));
    history.append(at(4600.0));
    EXPECT_EQ(times({history.samples().begin(), history.samples().end()}),
              (std::vector<double>{1000.0, 1002.0, 4600.0}));
    history.append(at(4600.001));
    EXPECT_EQ(times({history.samples().begin(), history.samples().end()}),
              (std::vector<double>{1002.0, 4600.0, 4600.001}));
    history.append(at(8300.0));
    EXPECT_EQ(times({history.samples().begin(), history.samples().end()}),
              std::vector<double>{8300.0});
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
