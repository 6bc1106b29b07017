#include "process/TaskClassification.h"
#include "support/RowName.h"
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

// A load of the named processes, each the parent of the next; the first
// runs `command` when one is given (else its own name).
struct KindCase {
    const char *name;
    const char *application;
    std::vector<const char *> processes;
    const char *command;
    TaskKind kind;
};

using rows::PrintTo;

class TaskKindTest : public testing::TestWithParam<KindCase> {};

TEST_P(TaskKindTest, FirstPassingTestDecides)
{
    const KindCase &row = GetParam();
    std::vector<ProcessMetric> processes;
    for (const char *name : row.processes)
        processes.push_back(
            makeProcess(pid_t(processes.size() + 1), pid_t(processes.size()), name));
    if (row.command)
        processes.front().command.command = QString::fromUtf8(row.command);
    EXPECT_EQ(classifyTaskKind(makeLoad(row.application, processes)), row.kind);
}

using K = TaskKind;
const KindCase kKindCases[] = {
    {"NpmTestFromRedactedCommand", "node", {"node"}, "npm test", K::test},
    {"VitestBeforeVite", "node", {"vitest"}, nullptr, K::test},
    {"ViteAloneIsADevServer", "node", {"vite"}, nullptr, K::developmentServer},
    {"ChromeBasedTestRunnerIsATest", "Chrome", {"chrome", "playwright"}, nullptr, K::test},
    {"TestGluedToTheWordBeforeIsNoTest", "latest", {"latest"}, nullptr, K::unknown},
    {"TestAtTheVeryStartHasNoBlankBefore", "test", {"x"}, nullptr, K::unknown},
    {"ClangIsABuild", "x", {"clang"}, nullptr, K::build},
    {"CargoBuild", "cargo", {"cargo"}, "cargo build", K::build},
    {"IndexMatchesInsideAWord", "x", {"reindexer"}, nullptr, K::indexing},
    {"DockerBeforeVite", "x", {"docker", "vite"}, nullptr, K::container},
    {"NpmRunDevIsDevServer", "node", {"node"}, "npm dev", K::developmentServer},
    {"FirefoxIsABrowser", "Firefox", {"firefox"}, nullptr, K::browser},
    {"RendererIsABrowser", "Editor", {"Editor Renderer"}, nullptr, K::browser},
    {"CodexLast", "Codex", {"codex"}, nullptr, K::codex},
    {"UpperCaseIsLowered", "PYTEST", {"X"}, nullptr, K::test},
    {"BlankBeforeTheNameJoinsTheHaystack", "x", {"testbed"}, "bed", K::test},
    {"BlankBeforeTheCommandJoinsTheHaystack", "x", {"x"}, "test-data", K::test},
    {"CtestBeforeCmake", "cmake", {"cmake", "ctest"}, nullptr, K::test},
    {"GccCompilerProperIsABuild", "x", {"sh", "cc1plus"}, nullptr, K::build},
    {"NinjaIsABuild", "ninja", {"ninja"}, nullptr, K::build},
    {"MakeIsABuild", "bash", {"bash", "make"}, nullptr, K::build},
    {"GmakeIsABuild", "x", {"gmake"}, nullptr, K::build},
    {"MesonIsABuild", "x", {"meson"}, "meson", K::build},
    {"MavenIsABuild", "x", {"java"}, "mvn", K::build},
    {"LinkTimeOptimiserIsABuild", "x", {"lto1"}, nullptr, K::build},
    {"MakeTestIsATest", "x", {"make"}, "make test", K::test},
    {"RustAnalyzerIsIndexing", "x", {"rust-analyzer"}, nullptr, K::indexing},
    {"PodmanIsAContainer", "x", {"conmon"}, nullptr, K::container},
    {"UvicornIsADevServer", "x", {"uvicorn"}, nullptr, K::developmentServer},
    {"ChromiumIsABrowser", "Chromium", {"chromium"}, nullptr, K::browser},
    {"NothingKnownIsUnknown", "bash", {"sleep"}, nullptr, K::unknown},
};

INSTANTIATE_TEST_SUITE_P(Cases, TaskKindTest, testing::ValuesIn(kKindCases), RowName());

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

// Every kind's texts, symbol and confidence, with and without a project.
TEST(TaskClassificationTest, EachKindHasItsTextsAndConfidence)
{
    struct Row {
        const char *process;
        TaskKind kind;
        const char *title;
        const char *recommendation;
        const char *impact;
        const char *symbol;
        DiagnosisConfidence withoutProject;
        DiagnosisConfidence withProject;
    };
    using C = DiagnosisConfidence;
    const Row rows[] = {
        {"pytest", TaskKind::test, "Src 正在运行测试任务。",
         "测试仍在持续占用资源；如确认不再需要，可结束目标进程，这会中断测试。",
         "会中断当前测试，不会删除项目文件。", "checkmark.circle", C::medium, C::high},
        {"g++", TaskKind::build, "Src 正在编译项目。",
         "编译通常会自行结束，建议先等待；确认卡住后再终止。",
         "会中断当前编译，已生成的源文件不会被删除。", "hammer.fill", C::medium, C::high},
        {"mdworker", TaskKind::indexing, "Src 正在执行索引任务。",
         "索引通常可等待完成；频繁重复时再检查项目或系统状态。", "终止可能让索引稍后重新开始。",
         "magnifyingglass", C::medium, C::medium},
        {"docker", TaskKind::container, "Docker 相关进程正在持续占用资源。",
         "先检查正在运行的容器；不要直接结束整个 Docker 宿主。", "可能中断关联容器或本地开发服务。",
         "shippingbox.fill", C::medium, C::medium},
        {"next-server", TaskKind::developmentServer, "Src 正在运行本地开发服务。",
         "仍在开发时保留；项目暂时不用时可以结束。",
         "会停止本地开发服务，浏览器中的本地页面将无法访问。", "network", C::medium, C::high},
        {"safari", TaskKind::browser, "Src 的浏览器进程正在持续活跃。",
         "先使用浏览器任务管理器定位页面，不建议直接退出整个浏览器。",
         "可能关闭关联页面或扩展进程。", "globe", C::medium, C::medium},
        {"codex", TaskKind::codex, "Codex 正在执行持续计算任务。",
         "如果任务仍在推进，建议等待；确认卡住后可结束目标子进程。",
         "会中断当前 Codex 子任务，不会删除项目文件。", "terminal", C::medium, C::high},
        {"sleep", TaskKind::unknown, "Src 存在未归因的持续负载。",
         "先观察任务用途；证据不足时不建议直接结束。", "无法可靠判断终止影响。", "gearshape.2",
         C::low, C::low},
    };
    for (const Row &row : rows) {
        for (const bool project : {false, true}) {
            SCOPED_TRACE(std::string(row.process) + (project ? " with project" : ""));
            const auto result = TaskClassification::classify(makeLoad(
                "Src", {withCommand(makeProcess(1, 0, row.process), row.process,
                                    project ? std::optional<QString>("p") : std::nullopt)}));
            EXPECT_EQ(result.kind, row.kind);
            EXPECT_EQ(result.diagnosis.title, QString::fromUtf8(row.title));
            EXPECT_EQ(result.diagnosis.recommendation, QString::fromUtf8(row.recommendation));
            EXPECT_EQ(result.impact, QString::fromUtf8(row.impact));
            EXPECT_EQ(result.symbolName, QString::fromUtf8(row.symbol));
            EXPECT_EQ(result.diagnosis.confidence, project ? row.withProject : row.withoutProject);
            EXPECT_EQ(result.canTerminate, row.kind != TaskKind::unknown);
        }
    }
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
        {{makeProcess(1, 0, "sh"), withCommand(makeProcess(2, 1, "cargo"), "cargo", "kiln")},
         "cargo · kiln"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(TaskClassification::classify(makeLoad("x", row.processes)).detail,
                  QString::fromUtf8(row.detail));
}

} // namespace
