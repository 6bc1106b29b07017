#include "termination/ProcessTerminationResult.h"

#include <cerrno>

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProcessTerminationResult)
};

} // namespace

QString processTerminationRejectionText(ProcessTerminationRejection rejection)
{
    switch (rejection) {
    case ProcessTerminationRejection::notCurrentUser:
        return Words::tr("安全校验未通过：该进程不属于当前用户。");
    case ProcessTerminationRejection::selfProcess:
        return Words::tr("安全校验未通过：KilnWarden 不能结束自身。");
    case ProcessTerminationRejection::systemCritical:
        return Words::tr("安全校验未通过：系统关键进程不可结束。");
    case ProcessTerminationRejection::protectedProcess:
        return Words::tr("安全校验未通过：该进程受保护。");
    case ProcessTerminationRejection::alreadyExited:
        return Words::tr("任务已经结束，无需再次操作。");
    case ProcessTerminationRejection::identityChanged:
    case ProcessTerminationRejection::executableChanged:
        // The user need not tell a new process from a replaced executable:
        // either way the process shown is not the one there.
        return Words::tr("任务身份已经变化，为避免误伤未发送结束信号。");
    }
    return Words::tr("任务身份已经变化，为避免误伤未发送结束信号。");
}

ProcessTerminationResult ProcessTerminationResult::signalSent(ProcessTerminationSignal signal)
{
    return ProcessTerminationResult{SignalSent{signal}};
}

ProcessTerminationResult ProcessTerminationResult::rejected(ProcessTerminationRejection rejection)
{
    return ProcessTerminationResult{Rejected{rejection}};
}

ProcessTerminationResult ProcessTerminationResult::signalFailed(int errorNumber)
{
    return ProcessTerminationResult{SignalFailed{errorNumber}};
}

namespace {

QString signalFailedText(int errorNumber)
{
    switch (errorNumber) {
    case EPERM:
    case EACCES:
        return Words::tr("没有权限结束该任务，未进行重试。");
    case ESRCH:
        return Words::tr("任务已经结束，未进行重试。");
    default:
        return Words::tr("结束任务失败（系统错误 %1），未进行重试。").arg(errorNumber);
    }
}

} // namespace

QString ProcessTerminationResult::text() const
{
    if (const auto *sent = std::get_if<SignalSent>(&outcome)) {
        return sent->signal == ProcessTerminationSignal::forced ? Words::tr("已发送强制结束请求。")
                                                                : Words::tr("已发送正常结束请求。");
    }
    if (const auto *refused = std::get_if<Rejected>(&outcome))
        return processTerminationRejectionText(refused->rejection);
    return signalFailedText(std::get<SignalFailed>(outcome).errorNumber);
}
