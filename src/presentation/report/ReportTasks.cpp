#include "presentation/report/ReportTasks.h"

#include "presentation/report/ReportJson.h"
#include "presentation/report/TextTable.h"
#include "sampling/Text.h"
#include "sampling/UnitText.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <algorithm>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ReportTasks)
};

QString rankText(std::size_t index)
{
    return formatLocaleInteger(static_cast<long long>(index + 1));
}

QString targetText(const DashboardProcessSummary &target)
{
    return Words::tr("%1（PID %2）").arg(target.name, QString::number(target.pid));
}

} // namespace

QString loadSourcesSection(const DashboardStore &store)
{
    const std::vector<DashboardTask> &tasks = store.allTasks();
    QString out = Words::tr("负载来源（按持续负载排序）") + QLatin1Char('\n');
    if (tasks.empty()) {
        // The first sample's processes have no rates yet, so it ranks nothing.
        out +=
            Words::tr("暂无可排序的负载来源：采集两个样本后会按持续负载排序。") + QLatin1Char('\n');
        return out;
    }

    TextTable ranking({QStringLiteral("#"), Words::tr("应用"), Words::tr("类型"),
                       QStringLiteral("CPU"), Words::tr("内存"), Words::tr("磁盘"),
                       Words::tr("持续"), Words::tr("目标进程"), Words::tr("详情")});
    TextTable diagnoses(
        {QStringLiteral("#"), Words::tr("诊断"), Words::tr("建议"), Words::tr("置信度")});
    for (std::size_t index = 0; index < tasks.size(); ++index) {
        const DashboardTask &task = tasks[index];
        ranking.addRow({rankText(index), task.application, taskKindName(task.kind),
                        unitText(task.cpu, DisplayUnit::percent, 1), task.memory, task.disk,
                        task.duration, targetText(task.targetProcess), task.detail});
        diagnoses.addRow({rankText(index), task.diagnosis.title, task.diagnosis.recommendation,
                          diagnosisConfidenceName(task.diagnosis.confidence)});
    }
    out += ranking.render() + QLatin1Char('\n') + diagnoses.render() + QLatin1Char('\n');

    const auto selected = std::find_if(tasks.begin(), tasks.end(), [&](const DashboardTask &task) {
        return task.id == store.selectedTaskID();
    });
    if (selected == tasks.end())
        out += Words::tr("选中的任务：无") + QLatin1Char('\n');
    else
        out += Words::tr("选中的任务：%1（%2），目标进程 %3")
                   .arg(selected->application, selected->id, targetText(selected->targetProcess)) +
               QLatin1Char('\n');
    return out;
}

QJsonObject processNodeJson(const DashboardProcessNode &node)
{
    QJsonArray children;
    for (const DashboardProcessNode &child : node.children)
        children.append(processNodeJson(child));
    return QJsonObject{{QStringLiteral("id"), node.id},
                       {QStringLiteral("name"), node.name},
                       {QStringLiteral("pid"), qint64(node.pid)},
                       {QStringLiteral("parentPID"), qint64(node.parentPID)},
                       {QStringLiteral("cpu"), node.cpu},
                       {QStringLiteral("memory"), node.memory},
                       {QStringLiteral("disk"), node.disk},
                       {QStringLiteral("energyImpact"), resourceImpactName(node.energyImpact)},
                       {QStringLiteral("duration"), node.duration},
                       {QStringLiteral("command"), node.command},
                       {QStringLiteral("project"), optionalJson(node.project)},
                       {QStringLiteral("isTarget"), node.isTarget},
                       {QStringLiteral("children"), children}};
}

QJsonObject taskJson(const DashboardTask &task)
{
    QJsonArray tree;
    for (const DashboardProcessNode &root : task.processTree)
        tree.append(processNodeJson(root));
    const QJsonObject target{{QStringLiteral("name"), task.targetProcess.name},
                             {QStringLiteral("pid"), qint64(task.targetProcess.pid)},
                             {QStringLiteral("cpu"), task.targetProcess.cpu},
                             {QStringLiteral("duration"), task.targetProcess.duration}};
    const QJsonObject diagnosis{
        {QStringLiteral("title"), task.diagnosis.title},
        {QStringLiteral("confidence"), diagnosisConfidenceName(task.diagnosis.confidence)},
        {QStringLiteral("recommendation"), task.diagnosis.recommendation},
        {QStringLiteral("supportingFacts"), task.diagnosis.supportingFacts}};
    return QJsonObject{{QStringLiteral("id"), task.id},
                       {QStringLiteral("application"), task.application},
                       {QStringLiteral("kind"), taskKindName(task.kind)},
                       {QStringLiteral("detail"), task.detail},
                       {QStringLiteral("targetProcess"), target},
                       {QStringLiteral("relatedProcessCount"), task.relatedProcessCount},
                       {QStringLiteral("processTree"), tree},
                       {QStringLiteral("cpu"), task.cpu},
                       {QStringLiteral("memory"), task.memory},
                       {QStringLiteral("disk"), task.disk},
                       {QStringLiteral("energy"), resourceImpactName(task.energy)},
                       {QStringLiteral("duration"), task.duration},
                       {QStringLiteral("symbolName"), task.symbolName},
                       {QStringLiteral("diagnosis"), diagnosis},
                       {QStringLiteral("canTerminate"), task.canTerminate},
                       {QStringLiteral("terminationImpact"), task.terminationImpact},
                       {QStringLiteral("isEnded"), task.isEnded}};
}

void addLoadSourcesJson(QJsonObject &report, const DashboardStore &store)
{
    QJsonArray allTasks;
    for (const DashboardTask &task : store.allTasks())
        allTasks.append(taskJson(task));
    QJsonArray liveTasks;
    for (const DashboardTask &task : store.liveTasks())
        liveTasks.append(task.id);
    report.insert(QStringLiteral("allTasks"), allTasks);
    report.insert(QStringLiteral("liveTasks"), liveTasks);
    report.insert(QStringLiteral("selectedTaskID"), store.selectedTaskID());
    report.insert(QStringLiteral("selectedProcessID"), optionalJson(store.selectedProcessID()));
}
