// The process reader keeps each process's /proc files open from one tick to
// the next. What only the kernel can show, on processes this test starts: a
// process that ends takes its descriptors with it, and a shortage of
// descriptors costs no process.

#include "platform/linux/ProcfsProcessMetricReader.h"
#include "support/ShellChild.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <sys/resource.h>

namespace {

// This program's descriptors open on /proc/<pid> or a file below it.
int descriptorsOn(pid_t pid)
{
    const std::string directory = "/proc/" + std::to_string(pid);
    int count = 0;
    for (const auto &fd : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        const std::string target = std::filesystem::read_symlink(fd.path(), error).string();
        count += target.starts_with(directory) && !std::isdigit(target[directory.size()]);
    }
    return count;
}

// What the kept files show of an exec or a cd is the clock gate's tests'
// (ProcfsProcessMetricReaderLiveTest); here, that they go with the process.
TEST(ProcfsOpenFilesTest, KeptFilesCloseWhenTheProcessEnds)
{
    auto child = sleepingChild();
    ASSERT_TRUE(child->started());
    const pid_t pid = child->pid();
    ProcfsProcessMetricReader reader;
    ASSERT_NE(findPid(reader.readMetrics(TimePoint::now()), pid), nullptr);
    EXPECT_GT(descriptorsOn(pid), 0);

    child.reset();
    EXPECT_EQ(findPid(reader.readMetrics(TimePoint::now()), pid), nullptr);
    EXPECT_EQ(descriptorsOn(pid), 0);
}

TEST(ProcfsOpenFilesTest, AShortageOfDescriptorsCostsNoProcess)
{
    ProcfsProcessMetricReader reader;
    const TimePoint now = TimePoint::now();
    reader.readMetrics(now); // keeps what runs now

    // New processes, and room for only a few more descriptors: the reader
    // closes some of what it keeps and reads the rest by opening and closing.
    std::vector<std::unique_ptr<ShellChild>> children;
    for (int i = 0; i < 40; ++i) {
        children.push_back(sleepingChild());
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
    // With descriptors to spare again, nothing is lost either.
    expectAllChildrenIn(reader.readMetrics(now));
}

} // namespace
