#pragma once

// The value types that the store publishes and the pages show. All records are
// plain values with equality over all fields in declaration order.

#include "sampling/SystemMetricSample.h"
#include "sampling/TimePoint.h"

#include <QString>

#include <array>
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
enum class DashboardSection { overview, liveDiagnosis, hardwareMonitor, eventHistory, settings };
enum class DashboardRecoveryState {
    idle,
    recovering,
    recovered,
    noImprovement,
    insufficientData,
    terminationFailed,
};
enum class DashboardTerminationPhase { verifying, exited, unresponsive, failed };
// graceful is signal 15, forced signal 9.
enum class ProcessTerminationSignal { graceful, forced };

// Case names, as stored and as the report's JSON writes them.
QString taskKindName(TaskKind kind);
QString resourceImpactName(ResourceImpact impact);
QString diagnosisConfidenceName(DiagnosisConfidence confidence);

inline constexpr std::array kAllDashboardSections = {
    DashboardSection::overview, DashboardSection::liveDiagnosis, DashboardSection::hardwareMonitor,
    DashboardSection::eventHistory, DashboardSection::settings};
QString dashboardSectionText(DashboardSection section);  // "overview", ...
QString dashboardSectionTitle(DashboardSection section); // "概览", ...
std::optional<DashboardSection> dashboardSectionFromText(const QString &text);

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

struct DashboardTask {
    QString id;
    QString application;
    TaskKind kind = TaskKind::unknown;
    QString detail;
    DashboardProcessSummary targetProcess;
    qint64 relatedProcessCount = 0;
    std::vector<DashboardProcessNode> processTree;
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

struct DashboardPendingTermination {
    DashboardTask task;
    DashboardProcessNode process;
    ProcessTerminationSignal mode = ProcessTerminationSignal::graceful;

    bool operator==(const DashboardPendingTermination &) const = default;

    QString confirmationTitle() const;
    QString confirmationActionTitle() const;
    QString confirmationMessage() const;
};

struct DashboardTerminationStatus {
    QString processNodeID;
    QString processName;
    pid_t pid = 0;
    ProcessTerminationSignal mode = ProcessTerminationSignal::graceful;
    DashboardTerminationPhase phase = DashboardTerminationPhase::verifying;

    bool operator==(const DashboardTerminationStatus &) const = default;
};

struct DashboardRecoveryMetrics {
    std::optional<double> cpu;
    std::optional<double> temperature;
    std::optional<double> fanRPM;
    SystemThermalState thermalState = SystemThermalState::unknown;

    bool operator==(const DashboardRecoveryMetrics &) const = default;

    static DashboardRecoveryMetrics fromSample(const SystemMetricSample &sample);
};

struct DashboardRecoveryContext {
    QString taskID;
    QString sourceName;
    QString processNodeID;
    QString processName;
    pid_t pid = 0;
    TimePoint startedAt;
    double observationWindow = 120.0;
    DashboardRecoveryMetrics baseline;

    bool operator==(const DashboardRecoveryContext &) const = default;
};

// The diagnosis shown while no task is selected.
TaskDiagnosis placeholderDiagnosis(bool liveTasksEmpty);
