#pragma once

#include "termination/ProcessIdentityReading.h"
#include "termination/ProcessTerminationResult.h"
#include "termination/ProcessTerminationTarget.h"
#include "termination/SignalSending.h"

#include <memory>
#include <optional>
#include <sys/types.h>
#include <vector>

class Cancellation;

// One `terminate` with the hold it took on the process: after a sent signal
// the pin still holds the signalled process, so the exit wait can ask the
// process itself instead of reading the pid again.
struct ProcessTerminationAttempt {
    ProcessTerminationResult result;
    std::unique_ptr<PinnedProcess> pin; // set only when the signal was sent
};

// Guards the one operation of the program that changes the machine: a signal
// is sent only after the process that the user saw has been proved to be the
// process that is there. One signal per `terminate`, never retried; going from
// graceful to forced is the user's decision, each a full `terminate` with its
// own check.
//
// A value without mutable state: copies share the reader and the sender, so a
// copy can check for the exit on a worker thread while the store goes on.
class ProcessTerminationController {
public:
    // 0.1 s, 0.15 s, 0.25 s, 0.5 s, 1 s: 2 s in all, checked early and often,
    // since most processes end within a fraction of a second.
    static std::vector<double> defaultExitVerificationIntervals();

    ProcessTerminationController(
        std::shared_ptr<ProcessIdentityReading> identityReader,
        std::shared_ptr<SignalSending> signalSender, uid_t currentUserID, pid_t selfPID,
        std::vector<double> exitVerificationIntervals = defaultExitVerificationIntervals());

    uid_t currentUserID() const { return m_currentUserID; }
    pid_t selfPID() const { return m_selfPID; }
    const std::vector<double> &exitVerificationIntervals() const
    {
        return m_exitVerificationIntervals;
    }

    // The safety check, in its fixed order; the first failing test decides.
    // The record tests (owner, pid below 2, this program, protected name)
    // look only at what was seen; the current tests look at the machine now,
    // so a process that has since become unacceptable is refused too.
    std::optional<ProcessTerminationRejection>
    checkRecord(const ProcessTerminationTarget &target) const;
    std::optional<ProcessTerminationRejection>
    checkCurrent(const ProcessTerminationTarget &target,
                 const std::optional<ProcessTerminationTarget> &current) const;
    std::optional<ProcessTerminationRejection>
    check(const ProcessTerminationTarget &target,
          const std::optional<ProcessTerminationTarget> &current) const;

    // Record check; pin the pid; read what is there; current check; signal
    // through the pin. The pin comes before the read, so the process read and
    // found to be the target is the process that receives the signal.
    // Call on the store's thread; it does not wait.
    ProcessTerminationResult terminate(const ProcessTerminationTarget &target,
                                       ProcessTerminationSignal signal) const;
    // The same, keeping the pin of a sent signal for `waitForExit`.
    ProcessTerminationAttempt attempt(const ProcessTerminationTarget &target,
                                      ProcessTerminationSignal signal) const;

    // Whether the target is still running when the wait ends: checks at once,
    // then after each interval (on a clock that counts through suspend),
    // returning false as soon as it has gone. A cancelled sleep gives true:
    // without proof of exit the target counts as running. Blocks the calling
    // thread; touches only the pin and the identity reader.
    bool waitForExit(const ProcessTerminationTarget &target, Cancellation &cancellation,
                     PinnedProcess *pin = nullptr) const;

    // Running: what the pin of the signalled process says, when it can tell.
    // The pin follows the process, not what can be read of it, so a process
    // that deletes its binary or stops being readable still runs. Without a
    // pin that can tell: a reading at the target's pid with the target's
    // owner, pid, start time and executable; a reused pid is then an exit.
    // The name takes no part.
    bool isRunning(const ProcessTerminationTarget &target, PinnedProcess *pin = nullptr) const;

private:
    std::optional<ProcessTerminationTarget> read(pid_t pid) const;

    std::shared_ptr<ProcessIdentityReading> m_identityReader;
    std::shared_ptr<SignalSending> m_signalSender;
    uid_t m_currentUserID;
    pid_t m_selfPID;
    std::vector<double> m_exitVerificationIntervals;
};
