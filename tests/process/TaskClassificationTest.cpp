#include "process/TaskClassification.h"
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

// A load as the grouping would give it: name, members, and the last member as target.
ApplicationLoad loadOf(const QString &application, std::vector<ProcessMetric> processes)
{
    ApplicationLoad load;
    load.id = QStringLiteral("task-1");
    load.application = application;
    load.processes = std::move(processes);
    load.target = load.processes.back();
    return load;
}

struct KindCase {
    const char *name;
    ApplicationLoad load;
    TaskKind kind;
};

class TaskKindTest : public testing::TestWithParam<KindCase> {};

TEST_P(TaskKindTest, FirstPassingTestDecides)
{
    EXPECT_EQ(classifyTaskKind(GetParam().load), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, TaskKindTest,
    testing::Values(
        KindCase{"NpmTestFromRedactedCommand",
                 loadOf("node", {withCommand(makeProcess(1, 0, "node"), "npm test")}),
                 TaskKind::test},
        KindCase{"VitestBeforeVite", loadOf("node", {makeProcess(1, 0, "vitest")}), TaskKind::test},
        KindCase{"ViteAloneIsADevServer", loadOf("node", {makeProcess(1, 0, "vite")}),
                 TaskKind::developmentServer},
        KindCase{"ChromeBasedTestRunnerIsATest",
                 loadOf("Chrome", {makeProcess(1, 0, "chrome"), makeProcess(2, 1, "playwright")}),
                 TaskKind::test},
        KindCase{"TestGluedToTheWordBeforeIsNoTest",
                 loadOf("latest", {makeProcess(1, 0, "latest")}), TaskKind::unknown},
        KindCase{"TestAtTheVeryStartHasNoBlankBefore", loadOf("test", {makeProcess(1, 0, "x")}),
                 TaskKind::unknown},
        KindCase{"ClangIsABuild", loadOf("make", {makeProcess(1, 0, "clang")}), TaskKind::build},
        KindCase{"CargoBuild",
                 loadOf("cargo", {withCommand(makeProcess(1, 0, "cargo"), "cargo build")}),
                 TaskKind::build},
        KindCase{"IndexMatchesInsideAWord", loadOf("x", {makeProcess(1, 0, "reindexer")}),
                 TaskKind::indexing},
        KindCase{"DockerBeforeVite",
                 loadOf("x", {makeProcess(1, 0, "docker"), makeProcess(2, 1, "vite")}),
                 TaskKind::container},
        KindCase{"NpmRunDevIsDevServer",
                 loadOf("node", {withCommand(makeProcess(1, 0, "node"), "npm dev")}),
                 TaskKind::developmentServer},
        KindCase{"FirefoxIsABrowser", loadOf("Firefox", {makeProcess(1, 0, "firefox")}),
                 TaskKind::browser},
        KindCase{"RendererIsABrowser", loadOf("Editor", {makeProcess(1, 0, "Editor Renderer")}),
                 TaskKind::browser},
        KindCase{"CodexLast", loadOf("Codex", {makeProcess(1, 0, "codex")}), TaskKind::codex},
        KindCase{"UpperCaseIsLowered", loadOf("PYTEST", {makeProcess(1, 0, "X")}), TaskKind::test},
        KindCase{"NothingKnownIsUnknown", loadOf("bash", {makeProcess(1, 0, "sleep")}),
                 TaskKind::unknown}),
    [](const testing::TestParamInfo<KindCase> &info) { return info.param.name; });

TEST(TaskClassificationTest, TextsOfATestWithProject)
{
    ProcessMetric runner = withCommand(makeProcess(7, 1, "pytest", 42.4, 1500.0), "python3 test",
                                       QStringLiteral("kiln"));
    runner.duration = 125.0;
    const TaskClassification result =
        TaskClassification::classify(loadOf("pytest", {makeProcess(1, 0, "bash", 0.2), runner}));
    EXPECT_EQ(result.kind, TaskKind::test);
    EXPECT_EQ(result.detail, QStringLiteral("python3 test · kiln"));
    EXPECT_EQ(result.diagnosis.title, QStringLiteral("pytest 正在运行测试任务。"));
    EXPECT_EQ(result.diagnosis.confidence, DiagnosisConfidence::high);
    EXPECT_EQ(
        result.diagnosis.recommendation,
        QStringLiteral("测试仍在持续占用资源；如确认不再需要，可结束目标进程，这会中断测试。"));
    // 42.6 % rounds to 43; the longest member ran 125 s; 1500 B/s is 2 KB/s.
    EXPECT_EQ(result.diagnosis.supportingFacts,
              QStringLiteral("CPU 43%  ·  已持续 2 分钟  ·  磁盘 2 KB/s"));
    EXPECT_EQ(result.impact, QStringLiteral("会中断当前测试，不会删除项目文件。"));
    EXPECT_TRUE(result.canTerminate);
    EXPECT_EQ(result.symbolName, QStringLiteral("checkmark.circle"));
}

TEST(TaskClassificationTest, ConfidenceAndTermination)
{
    struct Row {
        const char *name;
        ApplicationLoad load;
        DiagnosisConfidence confidence;
        bool canTerminate;
    };
    const Row rows[] = {
        {"codex without project", loadOf("Codex", {makeProcess(1, 0, "codex")}),
         DiagnosisConfidence::medium, true},
        {"codex with project",
         loadOf("Codex", {withCommand(makeProcess(1, 0, "codex"), "codex", QStringLiteral("p"))}),
         DiagnosisConfidence::high, true},
        {"browser with project stays medium",
         loadOf("x", {withCommand(makeProcess(1, 0, "firefox"), "firefox", QStringLiteral("p"))}),
         DiagnosisConfidence::medium, true},
        {"unknown is never offered", loadOf("x", {makeProcess(1, 0, "sleep")}),
         DiagnosisConfidence::low, false},
        {"protected target in a known kind", loadOf("chrome", {makeProcess(1, 0, "WindowServer")}),
         DiagnosisConfidence::medium, false},
        {"Linux session process in a known kind", loadOf("chrome", {makeProcess(1, 0, "Xwayland")}),
         DiagnosisConfidence::medium, false},
        {"launchd lower-cased",
         loadOf("x", {makeProcess(1, 0, "docker"), makeProcess(2, 1, "LaunchD")}),
         DiagnosisConfidence::medium, false},
    };
    for (const Row &row : rows) {
        const TaskClassification result = TaskClassification::classify(row.load);
        EXPECT_EQ(result.diagnosis.confidence, row.confidence) << row.name;
        EXPECT_EQ(result.canTerminate, row.canTerminate) << row.name;
    }
}

TEST(TaskClassificationTest, DetailByProjectAndCount)
{
    EXPECT_EQ(TaskClassification::classify(loadOf("x", {makeProcess(1, 0, "cargo")})).detail,
              QStringLiteral("cargo"));
    EXPECT_EQ(
        TaskClassification::classify(loadOf("x", {makeProcess(1, 0, "sh"), makeProcess(2, 1, "a"),
                                                  makeProcess(3, 1, "cargo")}))
            .detail,
        QStringLiteral("cargo · 3 个进程"));
}

TEST(TaskClassificationTest, KindTextsUseTheSourceName)
{
    struct Row {
        const char *process;
        const char *title;
        const char *symbol;
    };
    const Row rows[] = {
        {"swiftc", "Src 正在编译项目。", "hammer.fill"},
        {"mdworker", "Src 正在执行索引任务。", "magnifyingglass"},
        {"docker", "Docker 相关进程正在持续占用资源。", "shippingbox.fill"},
        {"next-server", "Src 正在运行本地开发服务。", "network"},
        {"safari", "Src 的浏览器进程正在持续活跃。", "globe"},
        {"codex", "Codex 正在执行持续计算任务。", "terminal"},
        {"sleep", "Src 存在未归因的持续负载。", "gearshape.2"},
    };
    for (const Row &row : rows) {
        const auto result =
            TaskClassification::classify(loadOf("Src", {makeProcess(1, 0, row.process)}));
        EXPECT_EQ(result.diagnosis.title, QString::fromUtf8(row.title)) << row.process;
        EXPECT_EQ(result.symbolName, QString::fromUtf8(row.symbol)) << row.process;
    }
}

TEST(TaskClassificationTest, SameLoadTwiceGivesEqualRecords)
{
    const ApplicationLoad load = loadOf("x", {makeProcess(1, 0, "vite", 12.0)});
    EXPECT_EQ(TaskClassification::classify(load), TaskClassification::classify(load));
}

} // namespace
