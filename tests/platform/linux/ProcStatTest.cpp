#include "platform/linux/ProcStat.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/ProcStatCPUUsageProbe.h"
#include "support/FixtureTable.h"
#include "support/Fixtures.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(ProcStatParser, FoldsTheKernelFieldsIntoFourCounters)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-stat-cpu-ticks"))) {
        std::optional<CPUTickSnapshot> expected;
        if (row.fields.size() == 5) {
            expected = CPUTickSnapshot{row.fields[1].toDouble(), row.fields[2].toDouble(),
                                       row.fields[3].toDouble(), row.fields[4].toDouble()};
        }
        EXPECT_EQ(parseProcStatCPUTicks(row.view(0)), expected) << row.where;
    }
    EXPECT_EQ(parseProcStatCPUTicks(""), std::nullopt);
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

} // namespace
