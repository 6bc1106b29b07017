#include "process/DashboardTask.h"

#include "sampling/EnumTable.h"
#include "sampling/Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <initializer_list>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DashboardTask)
};

// The names are the records' stored form and the report's JSON values.
template <typename Enum> struct CaseName {
    Enum key;
    const char *name;
};

constexpr CaseName<TaskKind> kTaskKindNames[] = {
    {TaskKind::test, "test"},
    {TaskKind::build, "build"},
    {TaskKind::indexing, "indexing"},
    {TaskKind::container, "container"},
    {TaskKind::developmentServer, "developmentServer"},
    {TaskKind::browser, "browser"},
    {TaskKind::codex, "codex"},
    {TaskKind::unknown, "unknown"},
};
static_assert(coversEnumeration(kTaskKindNames, TaskKind::unknown));

constexpr CaseName<ResourceImpact> kImpactNames[] = {
    {ResourceImpact::high, "high"},
    {ResourceImpact::medium, "medium"},
    {ResourceImpact::low, "low"},
};
static_assert(coversEnumeration(kImpactNames, ResourceImpact::low));

constexpr CaseName<DiagnosisConfidence> kConfidenceNames[] = {
    {DiagnosisConfidence::high, "high"},
    {DiagnosisConfidence::medium, "medium"},
    {DiagnosisConfidence::low, "low"},
};
static_assert(coversEnumeration(kConfidenceNames, DiagnosisConfidence::low));

} // namespace

QString taskKindName(TaskKind kind)
{
    return QLatin1StringView(enumRow(kTaskKindNames, kind).name);
}

QString resourceImpactName(ResourceImpact impact)
{
    return QLatin1StringView(enumRow(kImpactNames, impact).name);
}

QString diagnosisConfidenceName(DiagnosisConfidence confidence)
{
    return QLatin1StringView(enumRow(kConfidenceNames, confidence).name);
}

const DashboardProcessNode *DashboardProcessNode::nodeWithID(const QString &nodeID) const
{
    if (id == nodeID)
        return this;
    for (const DashboardProcessNode &child : children) {
        if (const DashboardProcessNode *found = child.nodeWithID(nodeID))
            return found;
    }
    return nullptr;
}

const DashboardProcessNode *DashboardProcessNode::nodeWithPID(pid_t processID) const
{
    if (pid == processID)
        return this;
    for (const DashboardProcessNode &child : children) {
        if (const DashboardProcessNode *found = child.nodeWithPID(processID))
            return found;
    }
    return nullptr;
}

bool DashboardProcessNode::matches(const QString &query) const
{
    const auto holds = [&](const QString &text) {
        return text.contains(query, Qt::CaseInsensitive);
    };
    // A pid is found by the digits a user types, never in grouped form.
    if (holds(name) || holds(QString::number(pid)) || holds(command) ||
        holds(project.value_or(QString())))
        return true;
    return std::any_of(children.begin(), children.end(),
                       [&](const DashboardProcessNode &child) { return child.matches(query); });
}

std::optional<std::vector<pid_t>> DashboardProcessNode::pathToTarget() const
{
    if (isTarget)
        return std::vector<pid_t>{};
    for (const DashboardProcessNode &child : children) {
        if (auto path = child.pathToTarget()) {
            path->insert(path->begin(), pid);
            return path;
        }
    }
    return std::nullopt;
}

QString DashboardProcessNode::roleLabel() const
{
    const QString text = (name + QLatin1Char(' ') + command).toLower();
    const auto holdsAny = [&](std::initializer_list<const char *> words) {
        return std::any_of(words.begin(), words.end(), [&](const char *word) {
            return text.contains(QLatin1StringView(word));
        });
    };
    if (holdsAny({"renderer"}))
        return Words::tr("渲染进程");
    if (holdsAny({"gpu"}))
        return Words::tr("图形处理进程");
    if (holdsAny({"helper", "service", "xpc"}))
        return Words::tr("应用辅助服务");
    if (holdsAny({"test", "pytest", "vitest", "jest"}))
        return Words::tr("测试任务");
    if (holdsAny({"build", "xcodebuild", "swiftc", "clang"}))
        return Words::tr("构建任务");
    return children.empty() ? Words::tr("工作进程") : Words::tr("父进程");
}

std::set<pid_t> DashboardTask::initiallyExpandedPIDs() const
{
    std::set<pid_t> expanded;
    for (const DashboardProcessNode &root : processTree) {
        if (const auto path = root.pathToTarget())
            expanded.insert(path->begin(), path->end());
    }
    return expanded;
}
