// The /proc files the Linux layer parses, and the probes over them.

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcMeminfoMemoryProbe.h"
#include "platform/linux/ProcPidFiles.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcStat.h"
#include "platform/linux/ProcStatCPUUsageProbe.h"
#include "platform/linux/ProcessName.h"
#include "support/FixtureTable.h"
#include "support/Fixtures.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// Rows of tests/fixtures/tables/proc-pid-*: each file's bytes in, the
// parser's value out; an empty file gives nothing.
std::optional<std::uint64_t> number(const std::optional<QByteArray> &field)
{
    return field ? std::optional(field->toULongLong()) : std::nullopt;
}

TEST(ProcPidFiles, ParsersOverTheirTables)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-pid-cmdlines"))) {
        QStringList expected;
        for (std::size_t index = 1; index < row.fields.size(); ++index)
            expected << *row.text(index);
        EXPECT_EQ(parseProcPidCmdline(QByteArrayView(row.fields[0])), expected) << row.where;
    }
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-pid-stat-malformed")))
        EXPECT_EQ(parseProcPidStat(row.view(0)), std::nullopt) << row.where;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-pid-statm-resident-bytes"))) {
        EXPECT_EQ(parseProcPidStatmResidentBytes(row.view(0), row.fields[1].toULongLong()),
                  number(row.field(2)))
            << row.where;
    }
    for (const FixtureRow &row : fixtureTable(QStringLiteral("proc-pid-io-disk-bytes")))
        EXPECT_EQ(parseProcPidIoDiskBytes(row.view(0)), number(row.field(1))) << row.where;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("process-display-names"))) {
        EXPECT_EQ(processDisplayName(*row.text(0), *row.text(1)), row.text(2)) << row.where;
    }
    EXPECT_TRUE(parseProcPidCmdline({}).isEmpty());
    EXPECT_EQ(parseProcPidStat(""), std::nullopt);
    EXPECT_EQ(parseProcPidStatmResidentBytes("", 4096), std::nullopt);
    EXPECT_EQ(parseProcPidIoDiskBytes(""), std::nullopt);
}

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
    writeStat("cpu  150 0 150 900 0 0 0 0 0 0\n");
    EXPECT_EQ(probe.sample(), SensorReading<double>::available(50.0, "Linux /proc/stat CPU ticks"));
}

TEST(MeminfoParser, TotalAndAvailableInBytes)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("meminfo-figures"))) {
        std::optional<MeminfoFigures> expected;
        if (row.fields.size() == 3)
            expected = MeminfoFigures{row.fields[1].toULongLong(), row.fields[2].toULongLong()};
        EXPECT_EQ(parseMeminfo(row.view(0)), expected) << row.where;
    }
    EXPECT_EQ(parseMeminfo(""), std::nullopt);
}

SensorReading<SystemMemoryUsage> probeOver(const QString &fixture)
{
    QTemporaryDir root;
    QFile::copy(fixturePath(fixture), root.filePath("meminfo"));
    return ProcMeminfoMemoryProbe(root.path()).sample();
}

TEST(ProcMeminfoMemoryProbe, OddFixtures)
{
    // More available than the total never wraps the used bytes.
    EXPECT_EQ(probeOver("meminfo/available-above-total"),
              SensorReading<SystemMemoryUsage>::available({0, 102400}, "Linux /proc/meminfo"));
    EXPECT_EQ(probeOver("meminfo/old-kernel-no-available"),
              SensorReading<SystemMemoryUsage>::temporarilyUnavailable("无法读取 /proc/meminfo"));
}

} // namespace
