#include "probes/CPUUsageTracker.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Reading = SensorReading<double>;
constexpr auto kNoDelta = "CPU 计数器无有效增量";

struct Step {
    std::optional<CPUTickSnapshot> ticks; // absent: the read failed
    Reading expected;
};

struct Sequence {
    const char *name;
    std::vector<Step> steps;
};

Reading figure(double value)
{
    return Reading::available(value, "ticks");
}

TEST(CPUUsageTracker, SequencesOfReads)
{
    const CPUTickSnapshot a{100, 50, 800, 50};
    const CPUTickSnapshot b{160, 80, 850, 60};
    const CPUTickSnapshot c{200, 100, 950, 60};
    const Reading warming = Reading::warmingUp(),
                  noDelta = Reading::temporarilyUnavailable(kNoDelta),
                  failed = Reading::temporarilyUnavailable("read failed");
    const Reading ab = figure(100.0 / 150.0 * 100.0);
    // clang-format off
    const std::vector<Sequence> sequences = {
        {"first read warms up, then deltas give a figure", {{a, warming}, {b, ab}}},
        {"identical counters give no delta, movement gives a figure again",
         {{a, warming}, {a, noDelta}, {b, ab}}},
        {"a counter going down costs one tick, then the lower base is used",
         {{b, warming}, {a, noDelta}, {b, ab}}},
        {"a failed read between two good ones spans the whole gap",
         {{a, warming}, {std::nullopt, failed}, {c, figure(160.0 / 310.0 * 100.0)}}},
        {"a failed first read does not warm up", {{std::nullopt, failed}, {a, warming}}},
    };
    // clang-format on
    for (const auto &sequence : sequences) {
        SCOPED_TRACE(sequence.name);
        CPUUsageTracker tracker("ticks", "read failed");
        for (std::size_t i = 0; i < sequence.steps.size(); ++i) {
            const Reading got = tracker.update(sequence.steps[i].ticks);
            const Reading &want = sequence.steps[i].expected;
            ASSERT_EQ(got.readingCase(), want.readingCase()) << "step " << i;
            if (want.isAvailable()) {
                EXPECT_NEAR(*got.value(), *want.value(), 1e-9) << "step " << i;
                EXPECT_EQ(got.sourceText(), "ticks");
            } else {
                EXPECT_EQ(got, want) << "step " << i;
            }
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
