#include "process/TaskClassification.h"

#include "process/LoadTextFormats.h"
#include "process/PrintableText.h"
#include "process/ProtectedProcessNames.h"
#include "process/TaskAssembly.h"
#include "sampling/Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(TaskClassification)
};

struct KindKeywords {
    TaskKind kind;
    std::initializer_list<std::string_view> keywords;
};

// Order matters: "vitest" is tested before "vite", and a Chrome-based test
// runner counts as a test. The leading blank in " test", " build", " dev",
// " start" and " serve" makes them match a word that follows another word in
// the haystack (as in "npm test") and not one glued to the word before it.
// Each kind's Linux tools follow its own words: "cc1" is the C and C++
// compiler proper (cc1, cc1plus), where a make or ninja build spends its time;
// "make" also finds "cmake", "gmake" and "qmake", so that a make running a long
// recipe is a build of its own. A build's own test step ("make test",
// "ctest") still reads as a test, as tests come first.
const std::array<KindKeywords, 7> kKindKeywords = {{
    {TaskKind::test,
     {"vitest", "jest", "pytest", "playwright", " test", "ctest", "nextest", "phpunit", "rspec"}},
    {TaskKind::build,
     {"xcodebuild", "swiftc", "clang", " build", "gcc", "g++", "cc1", "lto1", "rustc", "cargo",
      "ninja", "make", "meson", "javac", "gradle", "mvn", "bazel"}},
    {TaskKind::indexing,
     {"sourcekit", "mdworker", "spotlight", "index", "clangd", "tracker-miner", "baloo",
      "rust-analyzer"}},
    {TaskKind::container, {"docker", "containerd", "com.docker", "podman", "conmon", "buildkitd"}},
    {TaskKind::developmentServer,
     {" dev", " start", " serve", "vite", "next-server", "webpack", "uvicorn", "gunicorn",
      "nodemon"}},
    {TaskKind::browser,
     {"chrome", "safari", "renderer", "firefox", "chromium", "brave", "msedge", "vivaldi",
      "webkitwebprocess"}},
    {TaskKind::codex, {"codex"}},
}};

// The keywords of the table by their first byte, each with its kind's place
// in the table, in that order.
class KeywordsByFirstByte {
public:
    KeywordsByFirstByte()
    {
        for (std::size_t kind = 0; kind < kKindKeywords.size(); ++kind) {
            for (std::string_view keyword : kKindKeywords[kind].keywords)
                m_byFirstByte[static_cast<unsigned char>(keyword.front())].push_back(
                    {keyword, kind});
        }
    }
    const std::vector<std::pair<std::string_view, std::size_t>> &startingWith(char byte) const
    {
        return m_byFirstByte[static_cast<unsigned char>(byte)];
    }

private:
    std::array<std::vector<std::pair<std::string_view, std::size_t>>, 256> m_byFirstByte;
};

// Processes that belong to the system itself are never offered for ending,
// whatever the kind says.
bool isProtectedTarget(const QString &name)
{
    const QString lowered = name.toLower();
    if (lowered == QLatin1StringView("kernel_task") || lowered == QLatin1StringView("launchd") ||
        lowered == QLatin1StringView("loginwindow") || lowered == QLatin1StringView("windowserver"))
        return true;
    // The Linux session's own processes, shared with the termination guard.
    return std::any_of(kLinuxProtectedProcessNames.begin(), kLinuxProtectedProcessNames.end(),
                       [&](std::string_view protectedName) {
                           return lowered == QLatin1StringView(protectedName.data(),
                                                               qsizetype(protectedName.size()));
                       });
}

struct KindTexts {
    QString title;
    QString recommendation;
    QString impact;
    QString symbolName;
};

KindTexts kindTexts(TaskKind kind, const QString &application)
{
    switch (kind) {
    case TaskKind::test:
        return {Words::tr("%1 正在运行测试任务。").arg(application),
                Words::tr("测试仍在持续占用资源；如确认不再需要，可结束目标进程，这会中断测试。"),
                Words::tr("会中断当前测试，不会删除项目文件。"),
                QStringLiteral("checkmark.circle")};
    case TaskKind::build:
        return {Words::tr("%1 正在编译项目。").arg(application),
                Words::tr("编译通常会自行结束，建议先等待；确认卡住后再终止。"),
                Words::tr("会中断当前编译，已生成的源文件不会被删除。"),
                QStringLiteral("hammer.fill")};
    case TaskKind::indexing:
        return {Words::tr("%1 正在执行索引任务。").arg(application),
                Words::tr("索引通常可等待完成；频繁重复时再检查项目或系统状态。"),
                Words::tr("终止可能让索引稍后重新开始。"), QStringLiteral("magnifyingglass")};
    case TaskKind::container:
        return {Words::tr("Docker 相关进程正在持续占用资源。"),
                Words::tr("先检查正在运行的容器；不要直接结束整个 Docker 宿主。"),
                Words::tr("可能中断关联容器或本地开发服务。"), QStringLiteral("shippingbox.fill")};
    case TaskKind::developmentServer:
        return {Words::tr("%1 正在运行本地开发服务。").arg(application),
                Words::tr("仍在开发时保留；项目暂时不用时可以结束。"),
                Words::tr("会停止本地开发服务，浏览器中的本地页面将无法访问。"),
                QStringLiteral("network")};
    case TaskKind::browser:
        return {Words::tr("%1 的浏览器进程正在持续活跃。").arg(application),
                Words::tr("先使用浏览器任务管理器定位页面，不建议直接退出整个浏览器。"),
                Words::tr("可能关闭关联页面或扩展进程。"), QStringLiteral("globe")};
    case TaskKind::codex:
        return {Words::tr("Codex 正在执行持续计算任务。"),
                Words::tr("如果任务仍在推进，建议等待；确认卡住后可结束目标子进程。"),
                Words::tr("会中断当前 Codex 子任务，不会删除项目文件。"),
                QStringLiteral("terminal")};
    case TaskKind::unknown:
        break;
    }
    return {Words::tr("%1 存在未归因的持续负载。").arg(application),
            Words::tr("先观察任务用途；证据不足时不建议直接结束。"),
            Words::tr("无法可靠判断终止影响。"), QStringLiteral("gearshape.2")};
}

DiagnosisConfidence confidenceOf(TaskKind kind, bool hasProject)
{
    switch (kind) {
    case TaskKind::test:
    case TaskKind::build:
    case TaskKind::developmentServer:
    case TaskKind::codex:
        return hasProject ? DiagnosisConfidence::high : DiagnosisConfidence::medium;
    case TaskKind::indexing:
    case TaskKind::container:
    case TaskKind::browser:
        return DiagnosisConfidence::medium;
    case TaskKind::unknown:
        break;
    }
    return DiagnosisConfidence::low;
}

QString detailOf(const ApplicationLoad &load, TickTexts *texts)
{
    const QString command = printableText(load.target.command.command);
    if (const auto &project = load.target.command.project)
        return command + QStringLiteral(" · ") + printableText(*project);
    if (load.processes.size() < 2)
        return command;
    const auto count = static_cast<long long>(load.processes.size());
    return Words::tr("%1 · %2 个进程")
        .arg(command, texts ? texts->integer(count) : formatLocaleInteger(count));
}

QString supportingFactsOf(const ApplicationLoad &load, TickTexts *texts)
{
    const LoadTotals totals = loadTotals(load);
    const double cpu = totals.cpuPercent;
    const double disk = totals.diskBytesPerSecond;
    const long long roundedCPU =
        std::isfinite(cpu) ? std::llround(std::clamp(cpu, -1e15, 1e15)) : 0;
    const double duration = loadDuration(load);
    if (texts)
        return Words::tr("CPU %1%  ·  已持续 %2  ·  磁盘 %3")
            .arg(texts->integer(roundedCPU), texts->duration(duration), texts->rate(disk));
    return Words::tr("CPU %1%  ·  已持续 %2  ·  磁盘 %3")
        .arg(formatLocaleInteger(roundedCPU), durationText(duration), rateText(disk));
}

} // namespace

TaskKind classifyTaskKind(const ApplicationLoad &load)
{
    qsizetype length = load.application.size();
    for (const ProcessMetric &process : load.processes)
        length += 2 + process.name.size() + process.command.command.size();
    QString haystack;
    haystack.reserve(length);
    haystack += load.application;
    for (const ProcessMetric &process : load.processes) {
        haystack += QLatin1Char(' ');
        haystack += process.name;
        haystack += QLatin1Char(' ');
        haystack += process.command.command;
    }
    // The keywords are ASCII, and an ASCII byte never occurs inside another
    // character's UTF-8 bytes, so a byte search of the lower-cased UTF-8 text
    // finds exactly what a search of the text would. One pass looks at each
    // byte for the keywords that begin with it; the first kind in the table's
    // order that matches anywhere wins, as if each kind were tried in turn.
    static const KeywordsByFirstByte table;
    const QByteArray lowered = haystack.toLower().toUtf8();
    const std::string_view bytes(lowered.constData(), std::size_t(lowered.size()));
    std::size_t best = kKindKeywords.size();
    for (std::size_t position = 0; position < bytes.size() && best > 0; ++position) {
        const std::string_view rest = bytes.substr(position);
        for (const auto &[keyword, kindIndex] : table.startingWith(rest.front())) {
            if (kindIndex >= best)
                break; // sorted by kind: nothing earlier follows
            if (rest.starts_with(keyword)) {
                best = kindIndex;
                break;
            }
        }
    }
    if (best < kKindKeywords.size())
        return kKindKeywords[best].kind;
    return TaskKind::unknown;
}

TaskClassification TaskClassification::classify(const ApplicationLoad &load, TickTexts *tickTexts)
{
    return classify(load, classifyTaskKind(load), tickTexts);
}

TaskClassification TaskClassification::classify(const ApplicationLoad &load, TaskKind kind,
                                                TickTexts *tickTexts)
{
    const KindTexts texts = kindTexts(kind, load.application);
    TaskClassification result;
    result.kind = kind;
    result.detail = detailOf(load, tickTexts);
    result.diagnosis =
        TaskDiagnosis{texts.title, confidenceOf(kind, load.target.command.project.has_value()),
                      texts.recommendation, supportingFactsOf(load, tickTexts)};
    result.impact = texts.impact;
    result.canTerminate = kind != TaskKind::unknown && !isProtectedTarget(load.target.name);
    result.symbolName = texts.symbolName;
    return result;
}
