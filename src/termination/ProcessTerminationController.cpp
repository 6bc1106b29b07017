#include "termination/ProcessTerminationController.h"

#include "process/ProtectedProcessNames.h"
#include "sampling/Cancellation.h"

#include <cerrno>

std::vector<double> ProcessTerminationController::defaultExitVerificationIntervals()
{
    return {0.1, 0.15, 0.25, 0.5, 1.0};
}

ProcessTerminationController::ProcessTerminationController(
    std::shared_ptr<ProcessIdentityReading> identityReader,
    std::shared_ptr<SignalSending> signalSender, uid_t currentUserID, pid_t selfPID,
    std::vector<double> exitVerificationIntervals)
    : m_identityReader(std::move(identityReader)), m_signalSender(std::move(signalSender)),
      m_currentUserID(currentUserID), m_selfPID(selfPID),
      m_exitVerificationIntervals(std::move(exitVerificationIntervals))
{
}

std::optional<ProcessTerminationRejection>
ProcessTerminationController::checkRecord(const ProcessTerminationTarget &target) const
{
    if (target.userID != m_currentUserID)
        return ProcessTerminationRejection::notCurrentUser;
    // Before the self test: pid 0 and 1 are the kernel's, whoever asks.
    if (target.identity.pid < 2)
        return ProcessTerminationRejection::systemCritical;
    if (target.identity.pid == m_selfPID)
        return ProcessTerminationRejection::selfProcess;
    if (isTerminationProtectedName(target.name))
        return ProcessTerminationRejection::protectedProcess;
    return std::nullopt;
}

std::optional<ProcessTerminationRejection> ProcessTerminationController::checkCurrent(
    const ProcessTerminationTarget &target,
    const std::optional<ProcessTerminationTarget> &current) const
{
    if (!current)
        return ProcessTerminationRejection::alreadyExited;
    if (current->userID != m_currentUserID)
        return ProcessTerminationRejection::notCurrentUser;
    if (isTerminationProtectedName(current->name))
        return ProcessTerminationRejection::protectedProcess;
    if (current->identity.pid != target.identity.pid ||
        current->identity.startTime != target.identity.startTime)
        return ProcessTerminationRejection::identityChanged;
    if (current->identity.executablePath != target.identity.executablePath)
        return ProcessTerminationRejection::executableChanged;
    return std::nullopt;
}

std::optional<ProcessTerminationRejection>
ProcessTerminationController::check(const ProcessTerminationTarget &target,
                                    const std::optional<ProcessTerminationTarget> &current) const
{
    if (auto rejection = checkRecord(target))
        return rejection;
    return checkCurrent(target, current);
}

std::optional<ProcessTerminationTarget> ProcessTerminationController::read(pid_t pid) const
{
    if (!m_identityReader)
        return std::nullopt;
    return m_identityReader->readIdentity(pid);
}

ProcessTerminationResult
ProcessTerminationController::terminate(const ProcessTerminationTarget &target,
                                        ProcessTerminationSignal signal) const
{
    return attempt(target, signal).result;
}

ProcessTerminationAttempt
ProcessTerminationController::attempt(const ProcessTerminationTarget &target,
                                      ProcessTerminationSignal signal) const
{
    // The record alone can refuse without touching the machine.
    if (auto rejection = checkRecord(target))
        return {ProcessTerminationResult::rejected(*rejection), nullptr};
    if (!m_signalSender)
        return {ProcessTerminationResult::signalFailed(ENOSYS), nullptr};

    // Pin first, then prove: if the reading below is the target, the process
    // pinned before it can only be the target too, since a pid holds one
    // process at a time and the target was there before the pin.
    std::unique_ptr<PinnedProcess> pinned = m_signalSender->pin(target.identity.pid);
    if (auto rejection = checkCurrent(target, read(target.identity.pid)))
        return {ProcessTerminationResult::rejected(*rejection), nullptr};
    if (!pinned)
        return {ProcessTerminationResult::signalFailed(ENOSYS), nullptr};

    const int error = pinned->send(signal);
    if (error != 0)
        return {ProcessTerminationResult::signalFailed(error), nullptr};
    return {ProcessTerminationResult::signalSent(signal), std::move(pinned)};
}

bool ProcessTerminationController::isRunning(const ProcessTerminationTarget &target,
                                             PinnedProcess *pin) const
{
    if (pin) {
        if (const std::optional<bool> running = pin->isRunning())
            return *running;
    }
    const std::optional<ProcessTerminationTarget> current = read(target.identity.pid);
    return current && current->userID == target.userID &&
           current->identity.pid == target.identity.pid &&
           current->identity.startTime == target.identity.startTime &&
           current->identity.executablePath == target.identity.executablePath;
}

bool ProcessTerminationController::waitForExit(const ProcessTerminationTarget &target,
                                               Cancellation &cancellation, PinnedProcess *pin) const
{
    if (!isRunning(target, pin))
        return false;
    for (double interval : m_exitVerificationIntervals) {
        if (!cancellation.sleepFor(interval))
            return true;
        if (!isRunning(target, pin))
            return false;
    }
    return true;
}
