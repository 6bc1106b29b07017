#include "probes/DiskIORate.h"
#include "probes/GPUUsage.h"
#include "probes/NetworkIORate.h"
#include "support/FixtureTable.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

TimePoint at(double seconds)
{
    return TimePoint::fromSecondsSince1970(seconds);
}

const QString diskUnchanged = QStringLiteral("磁盘累计计数器无有效增量");
const QString noDisk = QStringLiteral("未发现系统磁盘累计读写计数器");

TEST(LargestDisk, PicksTheLargestTotalAndTheEarliestOnATie)
{
    EXPECT_EQ(largestDisk({{"a", 600, 300}, {"b", 400, 100}})->name, "a");
    EXPECT_EQ(largestDisk({{"a", 350, 350}, {"b", 700, 0}})->name, "a");
    EXPECT_EQ(largestDisk({{"a", 1, 1}, {"b", 0, 5}})->name, "b");
    EXPECT_FALSE(largestDisk({}).has_value());
    // Totals near the top of the range must not wrap into small numbers.
    const std::uint64_t top = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(largestDisk({{"small", 10, 10}, {"huge", top, top}})->name, "huge");
}

TEST(DiskIORateTracker, FollowsTheSnapshotRulesTickByTick)
{
    using R = SensorReading<double>;
    struct Tick {
        double time;
        std::vector<DiskDeviceCounters> devices;
        R expected;
    };
    // One run through every rule; each row depends on the rows before it.
    const Tick ticks[] = {
        {0.0, {}, R::unsupported(noDisk)},
        {1.0, {{"vda", 1000, 500}}, R::warmingUp()},
        {3.0, {{"vda", 3000, 1500}}, R::available(1500.0, "diskstats")},
        {3.0, {{"vda", 3000, 1500}}, R::temporarilyUnavailable(diskUnchanged)},
        {5.0, {}, R::unsupported(noDisk)}, // keeps the snapshot of t=3
        {7.0, {{"vda", 7000, 1500}}, R::available(1000.0, "diskstats")},
        {9.0, {{"vda", 100, 1600}}, R::temporarilyUnavailable(diskUnchanged)}, // device reset
        {11.0, {{"vda", 300, 1600}}, R::available(100.0, "diskstats")},
        // Another disk overtakes: the delta spans the two devices' counters.
        {13.0, {{"vda", 300, 1600}, {"sdb", 5000, 2000}}, R::available(2550.0, "diskstats")},
        {15.0, {{"vda", 9000, 9000}, {"sdb", 5000, 2000}}, R::available(5500.0, "diskstats")},
    };
    DiskIORateTracker tracker(QStringLiteral("diskstats"));
    for (std::size_t i = 0; i < std::size(ticks); ++i)
        EXPECT_EQ(tracker.update(ticks[i].devices, at(ticks[i].time)), ticks[i].expected)
            << "tick " << i;
    // An unchanged counter over time that advanced is a rate of zero, not a failure.
    EXPECT_EQ(tracker.update({{"vda", 9000, 9000}}, at(16.0)), R::available(0.0, "diskstats"));
    // Time going backwards is no delta.
    EXPECT_EQ(tracker.update({{"vda", 9100, 9000}}, at(15.5)),
              R::temporarilyUnavailable(diskUnchanged));
}

const QString netUnreadable = QStringLiteral("无法读取网络接口计数器");
const QString netUnchanged = QStringLiteral("网络接口计数器无有效增量");
constexpr int kLink = 17;

NetworkInterfaceRecord link(const char *name, std::uint32_t flags, std::uint64_t received,
                            std::uint64_t sent)
{
    return {name, flags, kLink, NetworkCounters{received, sent}};
}

TEST(SumNetworkCounters, CountsOnlyLiveNonLoopbackLinkRecordsWithCounters)
{
    const std::uint32_t up = kInterfaceUpFlag;
    const std::vector<NetworkInterfaceRecord> records = {
        link("lo", up | kInterfaceLoopbackFlag, 1'000'000, 1'000'000),
        link("eth0", up, 1000, 200),
        {"eth0", up, 2 /* an IPv4 address */, NetworkCounters{7777, 7777}},
        link("wlan0", 0, 5555, 5555),      // down
        {"tun0", up, kLink, std::nullopt}, // counters unreadable
        link("docker0", up | 0x1000, 10, 20),
    };
    EXPECT_EQ(sumNetworkCounters(records, kLink), (NetworkCounters{1010, 220}));
    EXPECT_EQ(sumNetworkCounters(std::vector<NetworkInterfaceRecord>{}, kLink), std::nullopt);
    EXPECT_EQ(sumNetworkCounters(std::nullopt, kLink), std::nullopt);
    // Only loopback up: counters exist and sum to zero.
    EXPECT_EQ(sumNetworkCounters(std::vector{link("lo", up | kInterfaceLoopbackFlag, 9, 9)}, kLink),
              (NetworkCounters{0, 0}));
}

TEST(NetworkIORateTracker, FollowsTheSnapshotRulesTickByTick)
{
    using R = SensorReading<NetworkThroughput>;
    using Records = std::optional<std::vector<NetworkInterfaceRecord>>;
    struct Tick {
        double time;
        Records records;
        R expected;
    };
    const std::uint32_t up = kInterfaceUpFlag;
    const Tick ticks[] = {
        {0.0, std::nullopt, R::temporarilyUnavailable(netUnreadable)},
        {1.0, std::vector{link("eth0", up, 1000, 200)}, R::warmingUp()},
        {3.0, std::vector{link("eth0", up, 5000, 600)},
         R::available({2000.0, 200.0}, "getifaddrs")},
        {4.0, std::vector<NetworkInterfaceRecord>{}, R::temporarilyUnavailable(netUnreadable)},
        {5.0, std::vector{link("eth0", up, 9000, 1000)},
         R::available({2000.0, 200.0}, "getifaddrs")}, // spans the failed tick
        {7.0, std::vector{link("eth0", up, 8000, 5000)}, R::temporarilyUnavailable(netUnchanged)},
        {9.0, std::vector{link("eth0", up, 8200, 5000)}, R::available({100.0, 0.0}, "getifaddrs")},
        {9.0, std::vector{link("eth0", up, 8400, 5100)}, R::temporarilyUnavailable(netUnchanged)},
        // An interface that appears, disappears or goes unread for a tick adds
        // nothing to that tick; eth0 alone gives the rate.
        {11.0, std::vector{link("eth0", up, 8600, 5300), link("wlan0", up, 4e9, 3e9)},
         R::available({100.0, 100.0}, "getifaddrs")},
        {13.0, std::vector{link("eth0", up, 8800, 5500)},
         R::available({100.0, 100.0}, "getifaddrs")},
        {15.0, std::vector{link("eth0", up, 9000, 5700), {"wlan0", up, kLink, std::nullopt}},
         R::available({100.0, 100.0}, "getifaddrs")},
        // Only loopback left: nothing counted moved, a rate of zero.
        {17.0, std::vector{link("lo", up | kInterfaceLoopbackFlag, 5, 5)},
         R::available({0.0, 0.0}, "getifaddrs")},
    };
    NetworkIORateTracker tracker(kLink, QStringLiteral("getifaddrs"));
    for (std::size_t i = 0; i < std::size(ticks); ++i)
        EXPECT_EQ(tracker.update(ticks[i].records, at(ticks[i].time)), ticks[i].expected)
            << "tick " << i;
}

TEST(GPUUsageReading, ClampsAndTakesTheLargestWithItsSource)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("gpu-usage"))) {
        std::vector<GPUBusyValue> devices;
        for (std::size_t index = 1; index < row.fields.size(); ++index) {
            const QStringList value = row.text(index)->split(u'@');
            devices.push_back({std::stod(value[0].toStdString()), value[1]});
        }
        const QStringList expected = row.text(0)->split(u'@');
        EXPECT_EQ(gpuUsageReading(devices, "none"),
                  expected.size() == 1
                      ? SensorReading<double>::unsupported(expected[0])
                      : SensorReading<double>::available(expected[0].toDouble(), expected[1]))
            << row.where;
    }
}

} // namespace
