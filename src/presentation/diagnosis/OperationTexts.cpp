#include "presentation/diagnosis/OperationTexts.h"

#include "dashboard/DashboardTexts.h"
#include "presentation/diagnosis/DiagnosisTexts.h"
#include "sampling/EnumTable.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(OperationTexts)
};

// What the end button and the verification line say while a termination is
// in each phase; the forced signal's own words where they differ.
struct PhaseTexts {
    DashboardTerminationPhase key;
    const char *button;
    const char *forcedButton;
    const char *status; // null: the recovery's line speaks instead
    const char *forcedStatus;
};
using Phase = DashboardTerminationPhase;
constexpr PhaseTexts kPhaseTexts[] = {
    {Phase::verifying, QT_TRANSLATE_NOOP("OperationTexts", "正在结束…"),
     QT_TRANSLATE_NOOP("OperationTexts", "正在强制结束…"),
     QT_TRANSLATE_NOOP("OperationTexts", "正在确认原进程是否退出，通常不超过 2 秒。")},
    {Phase::exited, QT_TRANSLATE_NOOP("OperationTexts", "进程已结束")},
    {Phase::unresponsive, QT_TRANSLATE_NOOP("OperationTexts", "强制结束"), nullptr,
     QT_TRANSLATE_NOOP("OperationTexts", "进程仍在运行；如需继续，可再次确认强制结束。")},
    {Phase::failed, QT_TRANSLATE_NOOP("OperationTexts", "重试结束"),
     QT_TRANSLATE_NOOP("OperationTexts", "强制结束失败"),
     QT_TRANSLATE_NOOP("OperationTexts", "本次操作未成功结束，未进入两分钟验证。"),
     QT_TRANSLATE_NOOP("OperationTexts", "强制结束未生效，建议打开系统监视器进一步检查。")},
};
static_assert(coversEnumeration(kPhaseTexts, Phase::failed));

struct RecoveryTexts {
    DashboardRecoveryState key;
    const char *status;
};
using Recovery = DashboardRecoveryState;
constexpr RecoveryTexts kRecoveryTexts[] = {
    {Recovery::idle,
     QT_TRANSLATE_NOOP("OperationTexts", "结束进程并确认退出后，将验证两分钟整机变化。")},
    {Recovery::recovering,
     QT_TRANSLATE_NOOP("OperationTexts", "正在对比操作前后的 CPU、温度和热状态。")},
    {Recovery::recovered, QT_TRANSLATE_NOOP("OperationTexts", "负载或温度已下降，验证通过。")},
    {Recovery::noImprovement,
     QT_TRANSLATE_NOOP("OperationTexts", "两分钟内未观察到达到阈值的整机改善。")},
    {Recovery::insufficientData,
     QT_TRANSLATE_NOOP("OperationTexts", "缺少可比较的系统样本，无法完成验证。")},
    {Recovery::terminationFailed,
     QT_TRANSLATE_NOOP("OperationTexts", "本次操作未成功结束，未进入两分钟验证。")},
};
static_assert(coversEnumeration(kRecoveryTexts, Recovery::terminationFailed));

} // namespace

QString endButtonTitle(const DashboardProcessNode *process,
                       const OptionalTerminationStatus &selectedStatus)
{
    if (!process)
        return Words::tr("结束选中进程");
    if (!selectedStatus)
        return process->isTarget ? Words::tr("结束主要进程") : Words::tr("结束选中进程");
    const PhaseTexts &texts = enumRow(kPhaseTexts, selectedStatus->phase);
    const bool forced = selectedStatus->mode == ProcessTerminationSignal::forced;
    return QCoreApplication::translate(
        "OperationTexts", forced && texts.forcedButton ? texts.forcedButton : texts.button);
}

QString endButtonAccessibleLabel(const QString &title, const DashboardProcessNode *process)
{
    if (!process)
        return title;
    return Words::tr("%1 %2，PID %3").arg(title, process->name, QString::number(process->pid));
}

QString terminationImpactText(const DashboardTask *task, const DashboardProcessNode *process,
                              bool canTerminate, const OptionalTerminationStatus &selectedStatus)
{
    if (!task || !process)
        return Words::tr("选择进程后显示结束操作的影响范围。");
    if (canTerminate) {
        const bool forced =
            selectedStatus && selectedStatus->phase == DashboardTerminationPhase::unresponsive;
        DashboardPendingTermination pending{*task, *process,
                                            forced ? ProcessTerminationSignal::forced
                                                   : ProcessTerminationSignal::graceful};
        return terminationConfirmationMessage(pending);
    }
    if (process->isTarget)
        return task->terminationImpact;
    return Words::tr("安全预检未通过，不能从 KilnWarden 结束这个进程。");
}

const DashboardRecoveryContext *
effectiveRecoveryContext(const OptionalTerminationStatus &selectedStatus,
                         const std::optional<DashboardRecoveryContext> &context)
{
    if (selectedStatus && selectedStatus->phase != DashboardTerminationPhase::exited)
        return nullptr;
    return context ? &*context : nullptr;
}

QString verificationTargetLine(const OptionalTerminationStatus &selectedStatus,
                               const DashboardRecoveryContext *effectiveContext)
{
    if (selectedStatus && selectedStatus->phase != DashboardTerminationPhase::exited) {
        return Words::tr("%1 · PID %2")
            .arg(selectedStatus->processName, QString::number(selectedStatus->pid));
    }
    if (effectiveContext) {
        return Words::tr("%1 · PID %2 · %3")
            .arg(effectiveContext->processName, QString::number(effectiveContext->pid),
                 Words::tr("最近一次操作"));
    }
    return {};
}

QString verificationStatusText(const OptionalTerminationStatus &selectedStatus,
                               DashboardRecoveryState recoveryState,
                               const DashboardRecoveryContext *effectiveContext,
                               const std::optional<SystemMetricSample> &latest)
{
    if (selectedStatus && selectedStatus->phase != DashboardTerminationPhase::exited) {
        const PhaseTexts &texts = enumRow(kPhaseTexts, selectedStatus->phase);
        const bool forced = selectedStatus->mode == ProcessTerminationSignal::forced;
        return QCoreApplication::translate(
            "OperationTexts", forced && texts.forcedStatus ? texts.forcedStatus : texts.status);
    }
    if (recoveryState == DashboardRecoveryState::recovering && effectiveContext) {
        return Words::tr("正在验证结束该进程后的整机变化 · 剩余约 %1")
            .arg(remainingObservationText(*effectiveContext, latest));
    }
    return QCoreApplication::translate("OperationTexts",
                                       enumRow(kRecoveryTexts, recoveryState).status);
}

QString remainingObservationText(const DashboardRecoveryContext &context,
                                 const std::optional<SystemMetricSample> &latest)
{
    const TimePoint now = latest ? latest->timestamp : context.startedAt;
    const double left = context.observationWindow - now.secondsSince(context.startedAt);
    // Cut to whole seconds; past the window, or with a value that is not a
    // number, nothing is left.
    long long seconds = 0;
    if (std::isfinite(left) && left > 0)
        seconds = static_cast<long long>(std::min(left, 1e12));
    if (seconds >= 60) {
        return Words::tr("%1 分 %2 秒")
            .arg(QString::number(seconds / 60), QString::number(seconds % 60));
    }
    return Words::tr("%1 秒").arg(QString::number(seconds));
}

QString recoveryCPUText(const std::optional<double> &cpu)
{
    return cpu ? wholePercentText(*cpu) : Words::tr("不可用");
}

QString recoveryTemperatureText(const std::optional<double> &celsius)
{
    if (!celsius || !std::isfinite(*celsius))
        return Words::tr("不可用");
    return unitText(*celsius, DisplayUnit::celsius);
}
