#include "platform/linux/GetifaddrsNetworkProbe.h"
#include "platform/linux/ProcDiskstatsDiskProbe.h"
#include "support/FixtureTable.h"
#include "support/Fixtures.h"
#include "support/SyncedWrite.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <map>

#include <cerrno>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

TimePoint at(double seconds)
{
    return TimePoint::fromSecondsSince1970(seconds);
}

// ---- /proc/diskstats ----

// The lines of tests/fixtures/tables/diskstats-lines, parsed as one file.
TEST(Diskstats, ParsesTheLinesAndCountsOnlyWholeRealDisksInBytes)
{
    std::string text;
    std::vector<DiskstatsLine> lines;
    std::vector<QByteArray> block;
    std::vector<DiskDeviceCounters> disks;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("diskstats-lines"))) {
        text += row.view(0);
        const QList<QByteArray> line = row.fields[1].split(':');
        if (line.size() == 3)
            lines.push_back({line[0], line[1].toULongLong(), line[2].toULongLong()});
        if (row.fields[2] != "-")
            block.push_back(row.fields[2]);
        const QList<QByteArray> bytes = row.field(3).value_or("").split(':');
        if (bytes.size() == 2)
            disks.push_back({line[0], bytes[0].toULongLong(), bytes[1].toULongLong()});
    }
    EXPECT_EQ(parseDiskstats(text), lines);
    EXPECT_TRUE(parseDiskstats("").empty());
    EXPECT_EQ(wholeDiskCounters(lines, block), disks);
    // Sector counts beyond what bytes can hold are capped, not wrapped.
    const auto huge = wholeDiskCounters({{"vda", ~0ull, 1}}, {"vda"});
    EXPECT_EQ(huge.front().bytesRead, ~0ull);
}

TEST(ProcDiskstatsDiskProbe, UsesTheLargestWholeDiskOfEachFixture)
{
    // In each fixture's diskstats-2s-later, only the largest whole disk has
    // read 4000 more sectors and written 2000 more: on the intel laptop
    // nvme0n1 beats loop0 and its own partitions; on the amd desktop nvme0n1
    // beats sda, and dm-0 (LVM on the nvme, larger still) and zram0 do not
    // count.
    for (const char *machine : {"intel-laptop", "amd-desktop", "server-vm"}) {
        QByteArray suffix;
        const KernelFileReader reader = [&suffix](const QByteArray &path) {
            return readKernelFile(path.endsWith("/diskstats") ? path + suffix : path);
        };
        const QString tree = fixturePath(QLatin1String(machine));
        ProcDiskstatsDiskProbe probe(tree + "/proc", tree + "/sys", reader);
        EXPECT_EQ(probe.sample(at(100)), SensorReading<double>::warmingUp()) << machine;
        suffix = "-2s-later";
        EXPECT_EQ(probe.sample(at(102)),
                  SensorReading<double>::available(6000.0 * 512 / 2,
                                                   QStringLiteral("Linux /proc/diskstats")))
            << machine;
    }
}

// A file written and flushed to the disk shows up in the disk rate. The
// machine's own /proc and /sys, and a file of the test's own.
TEST(ProcDiskstatsDiskProbe, SeesAWriteOnThisMachine)
{
    ProcDiskstatsDiskProbe probe;
    const TimePoint start = TimePoint::now();
    ASSERT_EQ(probe.sample(start), SensorReading<double>::warmingUp());
    QTemporaryDir directory(QDir::currentPath() + QStringLiteral("/kw-disk-XXXXXX"));
    ASSERT_TRUE(directory.isValid());
    const QByteArray path = directory.filePath(QStringLiteral("block")).toLocal8Bit();
    ASSERT_TRUE(writeSynced(path, 8));
    const SensorReading<double> reading = probe.sample(start.addingSeconds(1.0));
    ASSERT_TRUE(reading.isAvailable())
        << reading.reasonText().value_or(reading.sourceText()).toStdString();
    // 8 MiB in one (pretended) second; journal and metadata only add to it.
    EXPECT_GE(*reading.value(), 8.0 * (1 << 20));
    EXPECT_EQ(reading.sourceText(), QStringLiteral("Linux /proc/diskstats"));
}

// ---- network ----

class MadeUpListing final : public InterfaceAddressListing {
public:
    explicit MadeUpListing(std::optional<std::vector<InterfaceAddress>> addresses)
        : m_addresses(std::move(addresses))
    {
    }
    std::optional<std::vector<InterfaceAddress>> list() override { return m_addresses; }

private:
    std::optional<std::vector<InterfaceAddress>> m_addresses;
};

constexpr std::uint32_t up = 0x1;
constexpr std::uint32_t loopback = 0x8;

TEST(NetworkInterfaceRecords, ReadsSixtyFourBitCountersOfLinkRecordsOnly)
{
    const std::vector<InterfaceAddress> addresses = {
        {"lo", up | loopback, AF_PACKET}, {"wlp3s0", up, AF_PACKET}, {"wlp3s0", up, AF_INET},
        {"enp0s31f6", 0, AF_PACKET},      {"wwan0", up, AF_PACKET}, // listed, but gone from sysfs
        {"../../block", up, AF_PACKET},                             // not an interface name
    };
    std::vector<std::optional<NetworkCounters>> counters;
    for (const NetworkInterfaceRecord &record : networkInterfaceRecords(
             addresses, fixturePath("intel-laptop/sys").toLocal8Bit(), systemFileReader()))
        counters.push_back(record.counters);
    // wlp3s0 has received more than 32 bits can count; its address record is
    // not read.
    EXPECT_EQ(counters, (std::vector<std::optional<NetworkCounters>>{
                            NetworkCounters{91234, 91234}, NetworkCounters{5000000000, 9876543},
                            std::nullopt, NetworkCounters{0, 0}, std::nullopt, std::nullopt}));
}

TEST(GetifaddrsNetworkProbe, RatesOverMadeUpInterfacesAndCounters)
{
    std::map<QByteArray, std::uint64_t> counters;
    const KernelFileReader reader = [&counters](const QByteArray &path) {
        const auto found = counters.find(path);
        return found == counters.end()
                   ? FileReadResult{std::nullopt, ENOENT}
                   : FileReadResult{QByteArray::number(qulonglong(found->second)) + '\n', 0};
    };
    auto setCounters = [&](const char *name, std::uint64_t received, std::uint64_t sent) {
        const QByteArray statistics = "/sys/class/net/" + QByteArray(name) + "/statistics/";
        counters[statistics + "rx_bytes"] = received;
        counters[statistics + "tx_bytes"] = sent;
    };
    const std::vector<InterfaceAddress> addresses = {
        {"lo", up | loopback, AF_PACKET}, {"eth0", up, AF_PACKET}, {"eth0", up, AF_INET6}};
    GetifaddrsNetworkProbe probe(QStringLiteral("/sys"), std::make_unique<MadeUpListing>(addresses),
                                 reader);
    // Across 4 GiB, where the 32-bit counters of ifa_data would wrap.
    const std::uint64_t base = (4ull << 30) - 1000;
    setCounters("lo", 1, 1);
    setCounters("eth0", base, 200);
    EXPECT_EQ(probe.sample(at(10)), SensorReading<NetworkThroughput>::warmingUp());
    setCounters("lo", 900000, 900000);
    setCounters("eth0", base + 4000, 600);
    EXPECT_EQ(probe.sample(at(12)), SensorReading<NetworkThroughput>::available(
                                        {2000.0, 200.0}, QStringLiteral("getifaddrs")));
}

} // namespace
