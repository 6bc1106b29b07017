#include "platform/linux/ProcStat.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/ProcStatCPUUsageProbe.h"
#include "support/Fixtures.h"
#include "support/MachineTicks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

namespace {

TEST(ProcStatParser, FoldsTheKernelFieldsIntoFourCounters)
{
    const std::pair<const char *, std::optional<CPUTickSnapshot>> rows[] = {
        // user nice system idle iowait irq softirq steal guest guest_nice
        {"cpu  100 5 50 800 20 3 2 1 40 0\ncpu0 1 2 3 4\n",
         CPUTickSnapshot{100, 50 + 3 + 2 + 1, 800 + 20, 5}},
        {"cpu 10 0 20 30\n", CPUTickSnapshot{10, 20, 30, 0}}, // an old kernel's four fields
        {"intr 1 2\ncpu  1 2 3 4 5 6 7 8 9 10\n", CPUTickSnapshot{1, 3 + 6 + 7 + 8, 4 + 5, 2}},
        {"cpu  18446744073709551615 0 0 1\n", CPUTickSnapshot{1.8446744073709552e19, 0, 1, 0}},
        {"cpu  1 2 3\n", std::nullopt},
        {"cpu  1 2 x 4\n", std::nullopt},
        {"cpu0 1 2 3 4\n", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto &[text, expected] : rows)
        EXPECT_EQ(parseProcStatCPUTicks(text), expected) << text;
}

TEST(ProcStatParser, BootTime)
{
    EXPECT_EQ(parseProcStatBootTime("cpu 1 2 3 4\nbtime 1700000000\nprocesses 5\n"), 1700000000LL);
    EXPECT_EQ(parseProcStatBootTime("btime\n"), std::nullopt);
    EXPECT_EQ(parseProcStatBootTime("btime abc\n"), std::nullopt);
    const FileReadResult real = readKernelFile(fixturePath("procstat-debian-vm"));
    ASSERT_TRUE(real.bytes);
    EXPECT_TRUE(parseProcStatBootTime(asView(*real.bytes)));
    EXPECT_TRUE(parseProcStatCPUTicks(asView(*real.bytes)));
}

TEST(ProcStatCPUUsageProbe, ReadsAProcRootAndSaysWhyWhenItCannot)
{
    QTemporaryDir root;
    auto writeStat = [&](const QByteArray &text) {
        QFile file(root.filePath("stat"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    };
    ProcStatCPUUsageProbe probe(root.path());
    EXPECT_EQ(probe.sample(), SensorReading<double>::temporarilyUnavailable("/proc/stat 读取失败"));
    writeStat("cpu  100 0 100 800 0 0 0 0 0 0\n");
    EXPECT_EQ(probe.sample(), SensorReading<double>::warmingUp());
    writeStat("garbage\n");
    EXPECT_EQ(probe.sample(), SensorReading<double>::temporarilyUnavailable("/proc/stat 读取失败"));
    writeStat("cpu  150 0 150 900 0 0 0 0 0 0\n");
    EXPECT_EQ(probe.sample(), SensorReading<double>::available(50.0, "Linux /proc/stat CPU ticks"));
}

// The probe against the machine's ticks read by the test just before each of
// its reads, with one core kept busy: the same interval, whatever the load.
TEST(ProcStatCPUUsageProbe, TheRealMachineAgreesWithItsOwnTicks)
{
    auto ticks = [] {
        const FileReadResult stat = readKernelFile(QByteArrayLiteral("/proc/stat"));
        return stat.bytes ? parseProcStatCPUTicks(asView(*stat.bytes)) : std::nullopt;
    };
    BusyChild busy;
    ProcStatCPUUsageProbe probe;
    const auto before = ticks();
    EXPECT_EQ(probe.sample(), SensorReading<double>::warmingUp());
    QThread::msleep(300);
    const auto after = ticks();
    const SensorReading<double> second = probe.sample();
    ASSERT_TRUE(before && after && second.isAvailable());
    const std::optional<double> measured = cpuUsageBetween(*before, *after);
    ASSERT_TRUE(measured.has_value());
    EXPECT_NEAR(*second.value(), *measured, 5.0);
    EXPECT_GT(*second.value(), 0.0); // the spinning child is seen
}

} // namespace
