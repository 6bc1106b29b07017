// The process reader keeps each process's /proc files open from one tick to
// the next. What only the kernel can show, on processes this test starts: an
// exec and a cd are seen through the kept descriptors, a process that ends
// takes its descriptors with it, and a shortage of descriptors costs no
// process.

#include "platform/linux/ProcfsProcessMetricReader.h"
#include "support/ForkedChild.h"
#include "support/ProcessPrinting.h"
#include "support/ShellChild.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

TEST(ProcfsOpenFilesTest, KeptFilesShowAnExecAndACdAndCloseWhenTheProcessEnds)
{
    QTemporaryDir directory;
    ASSERT_TRUE(directory.isValid());
    const QString alpha = directory.filePath(QStringLiteral("alpha"));
    const QByteArray go = directory.filePath(QStringLiteral("go")).toLocal8Bit();
    ASSERT_TRUE(QDir().mkpath(alpha) && QDir().mkpath(directory.filePath("beta")));
    ASSERT_EQ(::mkfifo(go.constData(), 0600), 0);
    // Waits in alpha for a line on the fifo, then changes into beta and runs sleep.
    std::optional<ShellChild> child;
    child.emplace(
        alpha.toLocal8Bit(),
        std::vector<std::string>{"sh", "-c", "read x < ../go; cd ../beta && exec sleep 30"});
    ASSERT_TRUE(child->started());
    const pid_t pid = child->pid();

    ProcfsProcessMetricReader reader;
    const TimePoint start = TimePoint::now();
    const std::vector<RawProcessMetric> first = reader.readMetrics(start);
    const RawProcessMetric *before = findPid(first, pid);
    ASSERT_NE(before, nullptr);
    EXPECT_EQ(before->command.project, QStringLiteral("alpha"));
    EXPECT_NE(before->name, QStringLiteral("sleep"));
    ASSERT_GE(reader.keptProcessCapacity(), first.size());
    EXPECT_EQ(reader.keptProcessCount(), first.size()); // everything read stays open

    // Open for writing once the shell has opened it for reading.
    int fifo = -1;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return (fifo = ::open(go.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC)) >= 0; },
        5000));
    ASSERT_EQ(::write(fifo, "x\n", 2), 2);
    ::close(fifo);
    const QString exe = QStringLiteral("/proc/%1/exe").arg(pid);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return QFileInfo(exe).symLinkTarget().endsWith(QStringLiteral("/sleep")); }, 5000));
    const std::vector<RawProcessMetric> second = reader.readMetrics(start);
    const RawProcessMetric *after = findPid(second, pid);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->name, QStringLiteral("sleep"));
    EXPECT_TRUE(after->identity.executablePath.endsWith(QStringLiteral("/sleep")));
    EXPECT_EQ(after->command, (RedactedCommandSummary{QStringLiteral("sleep"), "beta"}));
    EXPECT_EQ(after->identity.startTime, before->identity.startTime);

    child.reset();
    const std::vector<RawProcessMetric> third = reader.readMetrics(start);
    EXPECT_EQ(findPid(third, pid), nullptr);
    EXPECT_EQ(reader.keptProcessCount(), third.size());
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
