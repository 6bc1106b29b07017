#include "probes/CPUUsageTracker.h"
#include "probes/DiskIORate.h"
#include "probes/GPUUsage.h"
#include "probes/NetworkIORate.h"
#include "support/FixtureTable.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

namespace {

TimePoint at(double seconds)
{
    return TimePoint::fromSecondsSince1970(seconds);
}

using Reading = SensorReading<double>;

TEST(CPUUsageTracker, SequencesOfReads)
{
    QString run;
    std::optional<CPUUsageTracker> tracker;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("cpu-usage-runs"))) {
        if (*row.text(0) != run) {
            run = *row.text(0);
            tracker.emplace("ticks", "read failed");
        }
        const QStringList ticks = row.text(1)->split(u',');
        const std::optional<CPUTickSnapshot> read =
            ticks.size() == 4
                ? std::optional(CPUTickSnapshot{ticks[0].toDouble(), ticks[1].toDouble(),
                                                ticks[2].toDouble(), ticks[3].toDouble()})
                : std::nullopt;
        const QString want = *row.text(2);
        const QStringList fraction = want.split(u'/');
        const Reading got = tracker->update(read);
        if (fraction.size() == 2) {
            ASSERT_TRUE(got.isAvailable()) << row.where;
            EXPECT_NEAR(*got.value(), fraction[0].toDouble() / fraction[1].toDouble() * 100.0, 1e-9)
                << row.where;
            EXPECT_EQ(got.sourceText(), "ticks");
        } else {
            EXPECT_EQ(got, want == u"warming" ? Reading::warmingUp()
                           : want == u"failed"
                               ? Reading::temporarilyUnavailable("read failed")
                               : Reading::temporarilyUnavailable("CPU 计数器无有效增量"))
                << row.where;
        }
    }
}

const QString diskUnchanged = QStringLiteral("磁盘累计计数器无有效增量");
const QString noDisk = QStringLiteral("未发现系统磁盘累计读写计数器");

// Which disk is largest is the tracker's table's; here, the tie and the top
// of the range.
TEST(LargestDisk, TakesTheEarliestOnATieAndNeverWrapsTheTotal)
{
    EXPECT_EQ(largestDisk({{"a", 350, 350}, {"b", 700, 0}})->name, "a");
    EXPECT_EQ(largestDisk({{"a", 1, 1}, {"b", 0, 5}})->name, "b");
    // A total past the top of the range, wrapped, would be 0.
    const std::uint64_t top = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(largestDisk({{"small", 10, 10}, {"huge", top, 1}})->name, "huge");
}

TEST(DiskIORateTracker, FollowsTheSnapshotRulesTickByTick)
{
    using R = SensorReading<double>;
    DiskIORateTracker tracker(QStringLiteral("diskstats"));
    for (const FixtureRow &row : fixtureTable(QStringLiteral("disk-rate-ticks"))) {
        std::vector<DiskDeviceCounters> devices;
        for (std::size_t index = 2; index < row.fields.size(); ++index) {
            const QStringList disk = row.text(index)->split(u':');
            devices.push_back({disk[0], disk[1].toULongLong(), disk[2].toULongLong()});
        }
        const QString want = *row.text(1);
        EXPECT_EQ(tracker.update(devices, at(row.text(0)->toDouble())),
                  want == u"warming"     ? R::warmingUp()
                  : want == u"none"      ? R::unsupported(noDisk)
                  : want == u"unchanged" ? R::temporarilyUnavailable(diskUnchanged)
                                         : R::available(want.toDouble(), "diskstats"))
            << row.where;
    }
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
}

TEST(NetworkIORateTracker, FollowsTheSnapshotRulesTickByTick)
{
    using R = SensorReading<NetworkThroughput>;
    NetworkIORateTracker tracker(kLink, QStringLiteral("getifaddrs"));
    for (const FixtureRow &row : fixtureTable(QStringLiteral("network-rate-ticks"))) {
        std::optional<std::vector<NetworkInterfaceRecord>> records;
        for (std::size_t index = 2; index < row.fields.size(); ++index) {
            const QStringList fields = row.text(index)->split(u':');
            const std::uint32_t loopback =
                fields.contains(u"loopback") ? kInterfaceLoopbackFlag : 0;
            std::optional<NetworkCounters> counters;
            if (fields[1] != u"-")
                counters = NetworkCounters{fields[1].toULongLong(), fields[2].toULongLong()};
            records = records.value_or(std::vector<NetworkInterfaceRecord>{});
            records->push_back({fields[0], kInterfaceUpFlag | loopback, kLink, counters});
        }
        const QStringList want = row.text(1)->split(u'/');
        EXPECT_EQ(tracker.update(records, at(row.text(0)->toDouble())),
                  want[0] == u"warming"      ? R::warmingUp()
                  : want[0] == u"unreadable" ? R::temporarilyUnavailable(netUnreadable)
                  : want[0] == u"unchanged"
                      ? R::temporarilyUnavailable(netUnchanged)
                      : R::available({want[0].toDouble(), want[1].toDouble()}, "getifaddrs"))
            << row.where;
    }
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
