#include "process/TaskClassification.h"
#include "support/FixtureTable.h"
#include "support/StoreTesting.h"

#include <gtest/gtest.h>

namespace {

ProcessMetric withCommand(ProcessMetric process, const QString &command,
                          std::optional<QString> project = std::nullopt)
{
    process.command.command = command;
    process.command.project = std::move(project);
    return process;
}

TEST(TaskKindTest, FirstPassingTestDecides)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("task-kinds"))) {
        std::vector<ProcessMetric> processes;
        for (std::size_t index = 3; index < row.fields.size(); ++index)
            processes.push_back(makeProcess(pid_t(index - 2), pid_t(index - 3), *row.text(index)));
        if (!row.text(2)->isEmpty())
            processes.front().command.command = *row.text(2);
        EXPECT_EQ(taskKindName(classifyTaskKind(makeLoad(*row.text(0), processes))), *row.text(1))
            << row.where;
    }
}

TEST(TaskClassificationTest, TextsOfATestWithProject)
{
    ProcessMetric runner = withCommand(makeProcess(7, 1, "pytest", 42.4, 1500.0), "python3 test",
                                       QStringLiteral("kiln"));
    runner.duration = 125.0;
    const TaskClassification result =
        TaskClassification::classify(makeLoad("pytest", {makeProcess(1, 0, "bash", 0.2), runner}));
    EXPECT_EQ(result.detail, QStringLiteral("python3 test · kiln"));
    EXPECT_EQ(result.diagnosis.title, QStringLiteral("pytest 正在运行测试任务。"));
    // 42.6 % rounds to 43; the longest member ran 125 s; 1500 B/s is 2 KB/s.
    EXPECT_EQ(result.diagnosis.supportingFacts,
              QStringLiteral("CPU 43%  ·  已持续 2 分钟  ·  磁盘 2 KB/s"));
}

TEST(TaskClassificationTest, ProtectedTargetsAreNeverOffered)
{
    const char *const targets[] = {"WindowServer", "Xwayland", "LaunchD", "gnome-shell"};
    for (const char *target : targets) {
        const auto load = makeLoad("x", {makeProcess(1, 0, "docker"), makeProcess(2, 1, target)});
        EXPECT_FALSE(TaskClassification::classify(load).canTerminate) << target;
    }
}

TEST(TaskClassificationTest, DetailByProjectAndCount)
{
    struct Row {
        std::vector<ProcessMetric> processes;
        const char *detail;
    };
    const Row rows[] = {
        {{makeProcess(1, 0, "cargo")}, "cargo"},
        {{makeProcess(1, 0, "sh"), makeProcess(2, 1, "cargo")}, "cargo · 2 个进程"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(TaskClassification::classify(makeLoad("x", row.processes)).detail,
                  QString::fromUtf8(row.detail));
}

} // namespace
