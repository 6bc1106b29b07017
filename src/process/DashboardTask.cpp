#include "process/DashboardTask.h"

#include "sampling/Text.h"

#include <algorithm>
#include <initializer_list>

QString taskKindName(TaskKind kind)
{
    switch (kind) {
    case TaskKind::test:
        return QStringLiteral("test");
    case TaskKind::build:
        return QStringLiteral("build");
    case TaskKind::indexing:
        return QStringLiteral("indexing");
    case TaskKind::container:
        return QStringLiteral("container");
    case TaskKind::developmentServer:
        return QStringLiteral("developmentServer");
    case TaskKind::browser:
        return QStringLiteral("browser");
    case TaskKind::codex:
        return QStringLiteral("codex");
    case TaskKind::unknown:
        return QStringLiteral("unknown");
    }
    return QStringLiteral("unknown");
}

QString resourceImpactName(ResourceImpact impact)
{
    switch (impact) {
    case ResourceImpact::high:
        return QStringLiteral("high");
    case ResourceImpact::medium:
        return QStringLiteral("medium");
    case ResourceImpact::low:
        return QStringLiteral("low");
    }
    return QStringLiteral("low");
}

QString diagnosisConfidenceName(DiagnosisConfidence confidence)
{
    switch (confidence) {
    case DiagnosisConfidence::high:
        return QStringLiteral("high");
    case DiagnosisConfidence::medium:
        return QStringLiteral("medium");
    case DiagnosisConfidence::low:
        return QStringLiteral("low");
    }
    return QStringLiteral("low");
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
        return kwText("渲染进程");
    if (holdsAny({"gpu"}))
        return kwText("图形处理进程");
    if (holdsAny({"helper", "service", "xpc"}))
        return kwText("应用辅助服务");
    if (holdsAny({"test", "pytest", "vitest", "jest"}))
        return kwText("测试任务");
    if (holdsAny({"build", "xcodebuild", "swiftc", "clang"}))
        return kwText("构建任务");
    return children.empty() ? kwText("工作进程") : kwText("父进程");
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
