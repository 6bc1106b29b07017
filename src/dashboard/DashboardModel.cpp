#include "dashboard/DashboardModel.h"

#include "sampling/Text.h"

QString taskKindName(TaskKind kind)
{
    switch (kind) {
    case TaskKind::test: return QStringLiteral("test");
    case TaskKind::build: return QStringLiteral("build");
    case TaskKind::indexing: return QStringLiteral("indexing");
    case TaskKind::container: return QStringLiteral("container");
    case TaskKind::developmentServer: return QStringLiteral("developmentServer");
    case TaskKind::browser: return QStringLiteral("browser");
    case TaskKind::codex: return QStringLiteral("codex");
    case TaskKind::unknown: return QStringLiteral("unknown");
    }
    return QStringLiteral("unknown");
}

QString resourceImpactName(ResourceImpact impact)
{
    switch (impact) {
    case ResourceImpact::high: return QStringLiteral("high");
    case ResourceImpact::medium: return QStringLiteral("medium");
    case ResourceImpact::low: return QStringLiteral("low");
    }
    return QStringLiteral("low");
}

QString diagnosisConfidenceName(DiagnosisConfidence confidence)
{
    switch (confidence) {
    case DiagnosisConfidence::high: return QStringLiteral("high");
    case DiagnosisConfidence::medium: return QStringLiteral("medium");
    case DiagnosisConfidence::low: return QStringLiteral("low");
    }
    return QStringLiteral("low");
}

QString dashboardRecoveryStateName(DashboardRecoveryState state)
{
    switch (state) {
    case DashboardRecoveryState::idle: return QStringLiteral("idle");
    case DashboardRecoveryState::recovering: return QStringLiteral("recovering");
    case DashboardRecoveryState::recovered: return QStringLiteral("recovered");
    case DashboardRecoveryState::noImprovement: return QStringLiteral("noImprovement");
    case DashboardRecoveryState::insufficientData: return QStringLiteral("insufficientData");
    case DashboardRecoveryState::terminationFailed: return QStringLiteral("terminationFailed");
    }
    return QStringLiteral("idle");
}

QString dashboardTerminationPhaseName(DashboardTerminationPhase phase)
{
    switch (phase) {
    case DashboardTerminationPhase::verifying: return QStringLiteral("verifying");
    case DashboardTerminationPhase::exited: return QStringLiteral("exited");
    case DashboardTerminationPhase::unresponsive: return QStringLiteral("unresponsive");
    case DashboardTerminationPhase::failed: return QStringLiteral("failed");
    }
    return QStringLiteral("failed");
}

QString processTerminationSignalName(ProcessTerminationSignal signal)
{
    return signal == ProcessTerminationSignal::forced ? QStringLiteral("forced")
                                                      : QStringLiteral("graceful");
}

QString dashboardTimeRangeText(DashboardTimeRange range)
{
    switch (range) {
    case DashboardTimeRange::fiveMinutes: return kwText("5 分钟");
    case DashboardTimeRange::thirtyMinutes: return kwText("30 分钟");
    case DashboardTimeRange::oneHour: return kwText("1 小时");
    }
    return kwText("5 分钟");
}

double dashboardTimeRangeSeconds(DashboardTimeRange range)
{
    switch (range) {
    case DashboardTimeRange::fiveMinutes: return 300.0;
    case DashboardTimeRange::thirtyMinutes: return 1800.0;
    case DashboardTimeRange::oneHour: return 3600.0;
    }
    return 300.0;
}

QString dashboardSectionText(DashboardSection section)
{
    switch (section) {
    case DashboardSection::overview: return QStringLiteral("overview");
    case DashboardSection::liveDiagnosis: return QStringLiteral("liveDiagnosis");
    case DashboardSection::hardwareMonitor: return QStringLiteral("hardwareMonitor");
    case DashboardSection::eventHistory: return QStringLiteral("eventHistory");
    case DashboardSection::settings: return QStringLiteral("settings");
    }
    return QStringLiteral("overview");
}

QString dashboardSectionTitle(DashboardSection section)
{
    switch (section) {
    case DashboardSection::overview: return kwText("概览");
    case DashboardSection::liveDiagnosis: return kwText("实时诊断");
    case DashboardSection::hardwareMonitor: return kwText("硬件监控");
    case DashboardSection::eventHistory: return kwText("事件历史");
    case DashboardSection::settings: return kwText("设置");
    }
    return kwText("概览");
}

std::optional<DashboardSection> dashboardSectionFromText(const QString &text)
{
    for (DashboardSection section : kAllDashboardSections) {
        if (dashboardSectionText(section) == text)
            return section;
    }
    return std::nullopt;
}

DashboardRecoveryMetrics DashboardRecoveryMetrics::fromSample(const SystemMetricSample &sample)
{
    return DashboardRecoveryMetrics{sample.cpuUsage.value(), sample.temperatureCelsius.value(),
                                    sample.fanRPM.value(), sample.thermalState};
}

TaskDiagnosis placeholderDiagnosis(bool liveTasksEmpty)
{
    return TaskDiagnosis{kwText("正在分析当前用户的应用负载。"), DiagnosisConfidence::low,
                         kwText("采集两个样本后会按持续负载排序。"),
                         liveTasksEmpty ? kwText("暂未发现可展示的活动任务")
                                        : kwText("请选择任务查看详情")};
}
