#include "dashboard/DashboardTrends.h"

#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

namespace {

using Reading = SensorReading<double>;

MetricSampleHistory historyOf(const std::vector<SystemMetricSample> &samples)
{
    MetricSampleHistory history(3600.0);
    for (const SystemMetricSample &sample : samples)
        history.append(sample);
    return history;
}

// Samples every 2 s from `start` for `seconds`, with CPU and temperature
// available.
std::vector<SystemMetricSample> steadySamples(double start, double seconds)
{
    std::vector<SystemMetricSample> samples;
    for (double t = start; t <= start + seconds + 1e-9; t += 2.0)
        samples.push_back(makeSample({.time = t, .cpu = 40.0, .temperature = 60.0}));
    return samples;
}

TEST(TrendPoints, PlaceSamplesOnTheWindowEndingAtTheNewest)
{
    struct Case {
        const char *name;
        double sampledSeconds;
        double window;
        double firstElapsed;
        std::size_t count;
    };
    const Case cases[] = {
        // 61 samples, 0..120 s, in a 60 s window: 31 points from 0 to 60.
        {"a full minute", 120.0, 60.0, 0.0, 31},
        // 10 minutes in a 30-minute window start at 1200 s.
        {"window longer than the history", 600.0, 1800.0, 1200.0, 301},
        {"a single sample sits at the window's end", 0.0, 60.0, 60.0, 1},
    };
    for (const Case &c : cases) {
        const MetricSampleHistory history = historyOf(steadySamples(1000.0, c.sampledSeconds));
        const auto heat = heatTrendPoints(history, c.window);
        const auto hardware = hardwareTrendPoints(history, c.window);
        ASSERT_EQ(heat.size(), c.count) << c.name;
        ASSERT_EQ(hardware.size(), c.count) << c.name;
        EXPECT_DOUBLE_EQ(heat.front().elapsedSeconds, c.firstElapsed) << c.name;
        EXPECT_EQ(heat.back().elapsedSeconds, c.window) << c.name;
        EXPECT_EQ(hardware.back().elapsedSeconds, c.window) << c.name;
        EXPECT_EQ(hardware.back().timestamp, history.samples().back().timestamp) << c.name;
    }
}

TEST(TrendPoints, GapsAreAbsentNeverZero)
{
    const SystemMetricSample warming =
        makeSample({.time = 100.0, .thermal = SystemThermalState::fair, .temperature = 55.5});
    SystemMetricSample full = makeSample({.time = 102.0, .cpu = 12.5, .fan = 2400.0});
    full.gpuUsage = Reading::available(30.0, "gpu");
    full.diskBytesPerSecond = Reading::available(1500.0, "disk");
    full.memoryUsage = SensorReading<SystemMemoryUsage>::available({250, 1000}, "mem");
    full.networkThroughput = SensorReading<NetworkThroughput>::available({100.0, 50.0}, "net");
    SystemMetricSample zeroMemory = makeSample(104.0);
    zeroMemory.memoryUsage = SensorReading<SystemMemoryUsage>::available({0, 0}, "mem");
    zeroMemory.gpuUsage = Reading::permissionDenied("refused");
    zeroMemory.networkThroughput =
        SensorReading<NetworkThroughput>::temporarilyUnavailable("no delta");

    const MetricSampleHistory history = historyOf({warming, full, zeroMemory});
    const auto heat = heatTrendPoints(history, 60.0);
    constexpr std::nullopt_t no = std::nullopt;
    const std::vector<HeatTrendPoint> expectedHeat = {
        {56.0, no, 55.5, no, SystemThermalState::fair},
        {58.0, 12.5, no, 2400.0, SystemThermalState::nominal},
        {60.0, no, no, no, SystemThermalState::nominal},
    };
    EXPECT_EQ(heat, expectedHeat);

    const auto hardware = hardwareTrendPoints(history, 60.0);
    const std::vector<HardwareTrendPoint> expectedHardware = {
        {warming.timestamp, 56.0, no, no, no, 55.5, no, no, no, no},
        {full.timestamp, 58.0, 12.5, 30.0, 25.0, no, 2400.0, 1500.0, 100.0, 50.0},
        {zeroMemory.timestamp, 60.0, no, no, 0.0, no, no, no, no, no},
    };
    EXPECT_EQ(hardware, expectedHardware);
}

// Each row as "id: source, value, availability"; titles and symbols are the
// table's constants.
QStringList rowsOf(const std::vector<DashboardSensorStatus> &statuses)
{
    QStringList rows;
    for (const DashboardSensorStatus &status : statuses)
        rows << status.id + ": " + status.source + ", " + status.currentValue + ", " +
                    sensorAvailabilityName(status.availability);
    return rows;
}

TEST(SensorStatuses, SevenRowsInFixedOrderWithEachReadingsWords)
{
    SystemMetricSample good = makeSample(10.0);
    good.temperatureCelsius = Reading::available(61.26, "hwmon");
    good.fanRPM = Reading::available(2400.0, "fans");
    good.gpuUsage = Reading::available(37.0, "NVML");
    good.memoryUsage =
        SensorReading<SystemMemoryUsage>::available({1500000000, 17179869184}, "meminfo");
    good.diskBytesPerSecond = Reading::available(1500000.0, "diskstats");
    good.networkThroughput =
        SensorReading<NetworkThroughput>::available({1000.0, 500.0}, "getifaddrs");
    SystemMetricSample bad = makeSample(10.0); // disk and network still warming up
    bad.temperatureCelsius = Reading::unsupported("no channel");
    bad.fanRPM = Reading::permissionDenied("refused");
    bad.gpuUsage = Reading::temporarilyUnavailable("gone");
    bad.memoryUsage = SensorReading<SystemMemoryUsage>::temporarilyUnavailable("unreadable");

    // Numbers take the interface's formats (grouped) even under the C locale.
    const ScopedDefaultLocale c(QLocale::c());
    QStringList expected[2];
    for (const FixtureRow &row : fixtureTable(QStringLiteral("sensor-status-rows")))
        expected[*row.text(0) == u"bad"] << *row.text(1);
    EXPECT_EQ(rowsOf(sensorStatuses(good, "procfs")), expected[0]);
    EXPECT_EQ(rowsOf(sensorStatuses(bad, "procfs")), expected[1]);
}

TEST(DashboardStoreTrends, TheStoreDerivesFromItsOwnSamples)
{
    auto store = makeStoreForTesting();
    EXPECT_EQ(store->sensorStatuses(),
              (std::vector<DashboardSensorStatus>{{"sampling", "本机传感器", "waveform.path.ecg",
                                                   "正在建立数据源连接", "采集中",
                                                   SensorAvailability::warmingUp}}));
    EXPECT_TRUE(store->heatTrendPoints(60.0).empty());
    EXPECT_TRUE(store->hardwareTrendPoints(60.0).empty());
    store->ingest(makeSample({.time = 50.0, .cpu = 33.0}));
    const auto statuses = store->sensorStatuses();
    ASSERT_EQ(statuses.size(), 7u);
    EXPECT_EQ(statuses.back().source, "procfs");
    ASSERT_EQ(store->hardwareTrendPoints(60.0).size(), 1u);
    EXPECT_EQ(store->hardwareTrendPoints(60.0).front().cpu, 33.0);
}

} // namespace
