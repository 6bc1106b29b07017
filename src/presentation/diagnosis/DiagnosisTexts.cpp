#include "presentation/diagnosis/DiagnosisTexts.h"

#include "presentation/kit/DashboardPalette.h"
#include "sampling/EnumTable.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DiagnosisTexts)
};

// Pids are identifiers, not quantities: never grouped.
QString pidText(pid_t pid)
{
    return QString::number(pid);
}

} // namespace

namespace {

struct ImpactRow {
    ResourceImpact key;
    const char *label;
    QRgb color;
};
constexpr ImpactRow kImpactRows[] = {
    {ResourceImpact::high, QT_TRANSLATE_NOOP("DiagnosisTexts", "高"), DashboardPalette::danger},
    {ResourceImpact::medium, QT_TRANSLATE_NOOP("DiagnosisTexts", "中"), DashboardPalette::warning},
    {ResourceImpact::low, QT_TRANSLATE_NOOP("DiagnosisTexts", "低"), DashboardPalette::success},
};
static_assert(coversEnumeration(kImpactRows, ResourceImpact::low));

} // namespace

QString resourceImpactLabel(ResourceImpact impact)
{
    return QCoreApplication::translate("DiagnosisTexts", enumRow(kImpactRows, impact).label);
}

QRgb resourceImpactColor(ResourceImpact impact)
{
    return enumRow(kImpactRows, impact).color;
}

QString sourceHeadingTitle(ProcessListScope scope)
{
    return scope == ProcessListScope::attention ? Words::tr("需关注的负载来源")
                                                : Words::tr("全部负载来源");
}

QString sourceCountText(ProcessListScope scope, const std::vector<const DashboardTask *> &visible)
{
    const QString sources = QString::number(visible.size());
    if (scope == ProcessListScope::attention)
        return Words::tr("%1 个来源").arg(sources);
    qint64 processes = 0;
    for (const DashboardTask *task : visible)
        processes += task->relatedProcessCount;
    return Words::tr("%1 个来源 · %2 个进程").arg(sources, QString::number(processes));
}

QString sourceHintText(ProcessListScope scope, const std::vector<DashboardTask> &allTasks)
{
    if (scope == ProcessListScope::attention)
        return Words::tr("按持续负载平滑排序 · 当前选中来源始终保留");
    qint64 processes = 0;
    for (const DashboardTask &task : allTasks)
        processes += task.relatedProcessCount;
    return Words::tr("按来源归组 · 覆盖 %1 个当前用户进程").arg(QString::number(processes));
}

QString sourceRowSubtitle(const DashboardTask &task)
{
    return Words::tr("主要进程 %1 · PID %2")
        .arg(task.targetProcess.name, pidText(task.targetProcess.pid));
}

QString sourceRowAccessibleLabel(const DashboardTask &task)
{
    return Words::tr("负载来源 %1，主要进程 %2，PID %3，主要进程 CPU %4%，来源合计 %5%")
        .arg(task.application, task.targetProcess.name, pidText(task.targetProcess.pid),
             QString::number(roundedWholeNumber(task.targetProcess.cpu)),
             QString::number(roundedWholeNumber(task.cpu)));
}

QString sourceListEmptyTitle(bool hasSample, ProcessListScope scope)
{
    if (!hasSample)
        return Words::tr("正在采集进程负载");
    return scope == ProcessListScope::attention ? Words::tr("没有匹配的负载来源")
                                                : Words::tr("暂未发现当前用户进程");
}

QString sourceListEmptySubtitle(ProcessListScope scope)
{
    return scope == ProcessListScope::attention
               ? Words::tr("切换到“全部来源”可以主动查找其他来源。")
               : Words::tr("可按应用、进程、PID、安全命令或项目名称搜索。");
}

QString selectionSummaryText(const DashboardTask *task, const DashboardProcessNode *process)
{
    if (!task || !process)
        return Words::tr("选择一个进程查看来源上下文和持续时间");
    return Words::tr("当前来源 %1 · 选中进程 %2 · PID %3 · 估算资源影响 %4")
        .arg(task->application, process->name, pidText(process->pid),
             resourceImpactLabel(process->energyImpact));
}

QString processNodeBadge(const DashboardProcessNode &node, int depth)
{
    if (node.isTarget)
        return Words::tr("主要负载进程");
    if (depth == 0)
        return Words::tr("关联根");
    return {};
}

QString processNodeDetailLine(const DashboardProcessNode &node, const QString &roleLabel)
{
    if (node.project) {
        return Words::tr("%1 · %2 · 项目 %3 · 磁盘 %4 · %5")
            .arg(roleLabel, node.command, *node.project, node.disk, node.duration);
    }
    return Words::tr("%1 · %2 · 磁盘 %3 · %4")
        .arg(roleLabel, node.command, node.disk, node.duration);
}

QString processNodeAccessibleLabel(const DashboardProcessNode &node, const QString &roleLabel)
{
    const QString cpu = QString::number(roundedWholeNumber(node.cpu));
    const QString impact = resourceImpactLabel(node.energyImpact);
    if (node.isTarget) {
        return Words::tr("%1，主要负载进程，%2，PID %3，CPU %4%，内存 %5，磁盘 %6，估算资源影响 %7")
            .arg(node.name, roleLabel, pidText(node.pid), cpu, node.memory, node.disk, impact);
    }
    return Words::tr("%1，%2，PID %3，CPU %4%，内存 %5，磁盘 %6，估算资源影响 %7")
        .arg(node.name, roleLabel, pidText(node.pid), cpu, node.memory, node.disk, impact);
}

QString processToggleAccessibleLabel(bool expanded)
{
    return expanded ? Words::tr("折叠子进程") : Words::tr("展开子进程");
}

QString pathSummaryTitle(const DashboardTask *task, const DashboardProcessNode *process)
{
    if (!task || !process)
        return Words::tr("正在分析当前进程负载");
    return Words::tr("%1 › %2").arg(task->application, process->name);
}

QString pathSummarySubtitle(const DashboardTask *task, const DashboardProcessNode *process)
{
    if (!task || !process)
        return Words::tr("采样完成后会显示具体进程、所属应用和关联进程");
    return Words::tr("PID %1 · %2 · %3 个关联进程")
        .arg(pidText(process->pid), process->roleLabel(),
             QString::number(task->relatedProcessCount));
}

QString pathSummaryAccessibleLabel(const DashboardTask *task, const DashboardProcessNode *process)
{
    if (!task || !process)
        return Words::tr("正在分析当前进程负载");
    return Words::tr("负载来源 %1，选中进程 %2，PID %3")
        .arg(task->application, process->name, pidText(process->pid));
}

QString processScopeDetail(const DashboardProcessNode *process)
{
    if (!process)
        return Words::tr("等待进程采样");
    return Words::tr("CPU %1% · 内存 %2 · 磁盘 %3 · 持续 %4")
        .arg(QString::number(roundedWholeNumber(process->cpu)), process->memory, process->disk,
             process->duration);
}

QString sourceScopeDetail(const DashboardTask *task)
{
    if (!task)
        return Words::tr("等待负载来源采样");
    return Words::tr("%1 合计 CPU %2% · %3 个关联进程")
        .arg(task->application, QString::number(roundedWholeNumber(task->cpu)),
             QString::number(task->relatedProcessCount));
}

QString systemScopeDetail(const std::optional<SystemMetricSample> &latest)
{
    if (!latest)
        return Words::tr("正在读取温度与热状态");
    const QString thermal = systemThermalStateLabel(latest->thermalState);
    const SensorReading<double> &temperature = latest->temperatureCelsius;
    if (temperature.isAvailable()) {
        return Words::tr("温度 %1 · 热状态 %2")
            .arg(unitText(*temperature.value(), DisplayUnit::celsius), thermal);
    }
    return Words::tr("温度 %1 · 热状态 %2 · 数据源 %3")
        .arg(Words::tr("不可用"), thermal, temperature.statusText());
}

QString heatTrendAxisLabel(double x)
{
    const double distance = 300.0 - x;
    if (!(distance >= 1.0))
        return Words::tr("现在");
    if (distance >= 60.0)
        return Words::tr("-%1m").arg(static_cast<long long>(distance / 60.0));
    return Words::tr("-%1s").arg(static_cast<long long>(distance));
}
