#include "platform/linux/FileReading.h"
#include "platform/linux/ProcMeminfoMemoryProbe.h"
#include "support/FixtureTable.h"
#include "support/Fixtures.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

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
    if (!fixture.isEmpty())
        QFile::copy(fixturePath(fixture), root.filePath("meminfo"));
    return ProcMeminfoMemoryProbe(root.path()).sample();
}

TEST(ProcMeminfoMemoryProbe, FixturesFromRealMachinesAndOddOnes)
{
    const auto real = probeOver("meminfo/debian-vm-meminfo");
    ASSERT_TRUE(real.isAvailable());
    EXPECT_EQ(real.sourceText(), "Linux /proc/meminfo");
    EXPECT_LE(real.value()->usedBytes, real.value()->totalBytes);
    EXPECT_GT(real.value()->totalBytes, 0u);
    // More available than the total never wraps the used bytes.
    EXPECT_EQ(probeOver("meminfo/available-above-total"),
              SensorReading<SystemMemoryUsage>::available({0, 102400}, "Linux /proc/meminfo"));

    const auto failure =
        SensorReading<SystemMemoryUsage>::temporarilyUnavailable("无法读取 /proc/meminfo");
    EXPECT_EQ(probeOver("meminfo/old-kernel-no-available"), failure);
    EXPECT_EQ(probeOver("meminfo/truncated"), failure);
    EXPECT_EQ(probeOver(QString()), failure); // no file at all
}

} // namespace
