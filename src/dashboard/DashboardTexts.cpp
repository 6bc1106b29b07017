#include "dashboard/DashboardTexts.h"

#include "sampling/Text.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DashboardTexts)
};

} // namespace

QString terminationConfirmationTitle(const DashboardPendingTermination &pending)
{
    // A pid is an identifier, not a quantity: never grouped ("PID 3750").
    const QString pid = QString::number(pending.process.pid);
    return pending.mode == ProcessTerminationSignal::forced
               ? Words::tr("强制结束 %1（PID %2）？").arg(pending.process.name, pid)
               : Words::tr("结束 %1（PID %2）？").arg(pending.process.name, pid);
}

QString terminationConfirmationActionTitle(const DashboardPendingTermination &pending)
{
    return pending.mode == ProcessTerminationSignal::forced ? Words::tr("强制结束")
                                                            : Words::tr("结束进程");
}

QString terminationConfirmationMessage(const DashboardPendingTermination &pending)
{
    if (pending.mode == ProcessTerminationSignal::forced)
        return Words::tr("进程没有响应正常结束请求。强制结束会立即中断进程，未保存的数据可能丢失，"
                         "所属应用也可能自动重新启动它。");
    if (pending.process.isTarget)
        return pending.task.terminationImpact;
    if (!pending.process.children.empty())
        return Words::tr(
                   "会结束这个进程，并可能中断它的 %1 个直接子进程；所属应用也可能自动重新启动它。")
            .arg(formatLocaleInteger(static_cast<long long>(pending.process.children.size())));
    return Words::tr("会结束这个进程；未保存的工作可能丢失，所属应用也可能自动重新启动它。");
}

TaskDiagnosis placeholderDiagnosis(bool liveTasksEmpty)
{
    return TaskDiagnosis{Words::tr("正在分析当前用户的应用负载。"), DiagnosisConfidence::low,
                         Words::tr("采集两个样本后会按持续负载排序。"),
                         liveTasksEmpty ? Words::tr("暂未发现可展示的活动任务")
                                        : Words::tr("请选择任务查看详情")};
}
