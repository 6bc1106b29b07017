#include "probes/CPUUsageTracker.h"
#include "support/FixtureTable.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <optional>

namespace {

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

TEST(CPUUsageTracker, UsageArithmetic)
{
    EXPECT_NEAR(*cpuUsageBetween({100, 50, 800, 50}, {160, 80, 850, 60}), 66.6667, 1e-3);
    EXPECT_EQ(cpuUsageBetween({0, 0, 0, 0}, {0, 0, 10, 0}), 0.0);
    EXPECT_EQ(cpuUsageBetween({0, 0, 0, 0}, {10, 0, 0, 0}), 100.0);
    EXPECT_EQ(cpuUsageBetween({0, 0, 0, 0}, {0, 0, 0, 10}), 100.0); // nice counts as busy
    EXPECT_EQ(cpuUsageBetween({0, 0, 5, 0}, {0, 0, 5, 0}), std::nullopt);
    EXPECT_EQ(cpuUsageBetween({0, 0, 5, 0}, {1, 0, 4, 0}), std::nullopt);
}

} // namespace
