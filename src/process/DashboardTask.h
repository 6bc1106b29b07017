#pragma once

// A load source as the pages show it: what kind of work it is, its sums, its
// process tree and the diagnosis. Assembled here from one tick's loads; the
// store ranks and keeps them. Plain values with equality over all fields in
// declaration order.

#include <QString>

#include <initializer_list>
#include <memory>
#include <optional>
#include <set>
#include <sys/types.h>
#include <vector>

enum class TaskKind {
    test,
    build,
    indexing,
    container,
    developmentServer,
    browser,
    codex,
    unknown
};
enum class ResourceImpact { high, medium, low };
enum class DiagnosisConfidence { high, medium, low };

// Case names, as the report's JSON writes them.
QString taskKindName(TaskKind kind);
QString resourceImpactName(ResourceImpact impact);
QString diagnosisConfidenceName(DiagnosisConfidence confidence);

struct TaskDiagnosis {
    QString title;
    DiagnosisConfidence confidence = DiagnosisConfidence::low;
    QString recommendation;
    QString supportingFacts;

    bool operator==(const TaskDiagnosis &) const = default;
};

struct DashboardProcessSummary {
    QString name;
    pid_t pid = 0;
    double cpu = 0.0;
    QString duration;

    bool operator==(const DashboardProcessSummary &) const = default;
};

// A process of a load source's tree; each node owns its children.
struct DashboardProcessNode {
    QString id; // processNodeKey(pid, startTime): a reused pid gets a new id
    QString name;
    pid_t pid = 0;
    pid_t parentPID = 0;
    double cpu = 0.0;
    QString memory;
    QString disk;
    ResourceImpact energyImpact = ResourceImpact::low;
    QString duration;
    QString command;
    std::optional<QString> project;
    bool isTarget = false;
    std::vector<DashboardProcessNode> children;

    bool operator==(const DashboardProcessNode &) const = default;

    // Depth-first, children in order; this node first.
    const DashboardProcessNode *nodeWithID(const QString &nodeID) const;
    const DashboardProcessNode *nodeWithPID(pid_t processID) const;
    // Case-insensitive in the user's locale over name, the pid in plain digits,
    // command and project, or any child matching.
    bool matches(const QString &query) const;
    // Empty for the target itself; this pid then the child's path when the
    // target is below; nothing when there is no target below.
    std::optional<std::vector<pid_t>> pathToTarget() const;
    QString roleLabel() const;
};

// A task's process tree: its roots, shared by every copy of the task. The
// store copies each task from one tick's assembly into its lists and the
// views keep a copy of the one they show, so a source of five hundred
// processes would otherwise copy five hundred nodes several times a tick.
// Never changed once made; a new tree is a new value.
class ProcessForest {
public:
    ProcessForest() = default;
    ProcessForest(std::vector<DashboardProcessNode> roots)
        : m_roots(roots.empty() ? nullptr
                                : std::make_shared<const std::vector<DashboardProcessNode>>(
                                      std::move(roots)))
    {
    }
    ProcessForest(std::initializer_list<DashboardProcessNode> roots)
        : ProcessForest(std::vector<DashboardProcessNode>(roots))
    {
    }

    const std::vector<DashboardProcessNode> &roots() const { return m_roots ? *m_roots : kNone; }
    operator const std::vector<DashboardProcessNode> &() const { return roots(); }

    auto begin() const { return roots().begin(); }
    auto end() const { return roots().end(); }
    std::size_t size() const { return roots().size(); }
    bool empty() const { return roots().empty(); }
    const DashboardProcessNode &front() const { return roots().front(); }
    const DashboardProcessNode &operator[](std::size_t index) const { return roots()[index]; }
    const DashboardProcessNode &at(std::size_t index) const { return roots().at(index); }

    // The same tree compares without a walk.
    bool operator==(const ProcessForest &other) const
    {
        return m_roots == other.m_roots || roots() == other.roots();
    }

private:
    static inline const std::vector<DashboardProcessNode> kNone;
    std::shared_ptr<const std::vector<DashboardProcessNode>> m_roots;
};

struct DashboardTask {
    QString id;
    QString application;
    TaskKind kind = TaskKind::unknown;
    QString detail;
    DashboardProcessSummary targetProcess;
    qint64 relatedProcessCount = 0;
    ProcessForest processTree;
    double cpu = 0.0;
    QString memory;
    QString disk;
    ResourceImpact energy = ResourceImpact::low;
    QString duration;
    QString symbolName;
    TaskDiagnosis diagnosis;
    bool canTerminate = false;
    QString terminationImpact;
    bool isEnded = false;

    bool operator==(const DashboardTask &) const = default;

    // The ancestors of the target, which the process tree opens first.
    std::set<pid_t> initiallyExpandedPIDs() const;
};
