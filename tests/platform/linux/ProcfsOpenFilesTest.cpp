// The process reader keeps each process's /proc files open from one tick to
// the next. What only the kernel can show, on processes this test starts: a
// process that ends takes its descriptors with it, and a shortage of
// descriptors costs no process.

#include "platform/linux/ProcfsProcessMetricReader.h"
#include "support/ForkedChild.h"
#include "support/ShellChild.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

#include <sys/resource.h>

namespace {

// What the kept files show of an exec or a cd is the clock gate's tests'
// (ProcfsProcessMetricReaderLiveTest); here, that they go with the process.
TEST(ProcfsOpenFilesTest, KeptFilesCloseWhenTheProcessEnds)
{
    auto child = std::make_unique<ForkedChild>(ForkedChild::Behaviour::waitsForSignals);
    ASSERT_TRUE(child->started());
    const pid_t pid = child->pid();
    ProcfsProcessMetricReader reader;
    const std::vector<RawProcessMetric> first = reader.readMetrics(TimePoint::now());
    ASSERT_NE(findPid(first, pid), nullptr);
    ASSERT_GE(reader.keptProcessCapacity(), first.size());
    EXPECT_EQ(reader.keptProcessCount(), first.size()); // everything read stays open

    child.reset();
    const std::vector<RawProcessMetric> second = reader.readMetrics(TimePoint::now());
    EXPECT_EQ(findPid(second, pid), nullptr);
    EXPECT_EQ(reader.keptProcessCount(), second.size());
}

TEST(ProcfsOpenFilesTest, AShortageOfDescriptorsCostsNoProcess)
{
    ProcfsProcessMetricReader reader;
    const TimePoint now = TimePoint::now();
    reader.readMetrics(now); // keeps what runs now
    const std::size_t keptBefore = reader.keptProcessCount();

    // New processes, and room for only a few more descriptors: the reader
    // closes some of what it keeps and reads the rest by opening and closing.
    std::vector<std::unique_ptr<ForkedChild>> children;
    for (int i = 0; i < 40; ++i) {
        children.push_back(std::make_unique<ForkedChild>(ForkedChild::Behaviour::waitsForSignals));
        ASSERT_TRUE(children.back()->started());
    }
    auto expectAllChildrenIn = [&](const std::vector<RawProcessMetric> &records) {
        for (const auto &child : children)
            EXPECT_NE(findPid(records, child->pid()), nullptr) << child->pid();
    };
    const auto open = std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    rlimit saved{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &saved), 0);
    rlimit tight = saved;
    tight.rlim_cur = rlim_t(open + 6);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &tight), 0);
    const std::vector<RawProcessMetric> records = reader.readMetrics(now);
    ::setrlimit(RLIMIT_NOFILE, &saved);

    expectAllChildrenIn(records);
    EXPECT_LT(reader.keptProcessCount(), keptBefore + children.size());
    EXPECT_LE(reader.keptProcessCount(), reader.keptProcessCapacity());
    // With descriptors to spare again, nothing is lost either.
    expectAllChildrenIn(reader.readMetrics(now));
}

} // namespace
