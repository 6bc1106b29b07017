#include "platform/linux/FileReading.h"
#include "platform/linux/ProcMeminfoMemoryProbe.h"
#include "support/Fixtures.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(MeminfoParser, TotalAndAvailableInBytes)
{
    const std::pair<const char *, std::optional<MeminfoFigures>> rows[] = {
        {"MemTotal:       16314160 kB\nMemFree: 1 kB\nMemAvailable:   10000000 kB\n",
         MeminfoFigures{16314160ULL * 1024, 10000000ULL * 1024}},
        {"MemAvailable: 5 kB\nMemTotal: 10 kB\n", MeminfoFigures{10240, 5120}},
        {"MemTotal:       16314160 kB\nMemFree: 1 kB\n", std::nullopt}, // before Linux 3.14
        {"MemTotal: abc kB\nMemAvailable: 1 kB\n", std::nullopt},
        {"MemTotal: -5 kB\nMemAvailable: 1 kB\n", std::nullopt},
        {"MemTotal: 99999999999999999999 kB\nMemAvailable: 1 kB\n", std::nullopt},
        {"MemTotalX: 10 kB\nMemAvailable: 1 kB\n", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto &[text, expected] : rows)
        EXPECT_EQ(parseMeminfo(text), expected) << text;
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
