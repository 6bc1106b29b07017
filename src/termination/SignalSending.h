#pragma once

#include "termination/ProcessTerminationSignal.h"

#include <memory>
#include <optional>
#include <sys/types.h>

// A hold on the one process that was at a pid when it was pinned. Signals go
// to that process or nowhere: if it has gone, `send` fails with ESRCH even if
// the pid has meanwhile been given to another process. Releasing the handle
// releases the hold (an RAII owner of the platform's process handle).
class PinnedProcess {
public:
    virtual ~PinnedProcess() = default;
    // Sends graceful (SIGTERM, 15) or forced (SIGKILL, 9) once. Gives 0 when the
    // kernel took the signal, else the error number; never retries.
    virtual int send(ProcessTerminationSignal signal) = 0;
    // Whether the pinned process is still running, where the handle can tell
    // without reading anything else (a pidfd becomes readable once its
    // process has exited; a zombie has exited). Absent where it cannot: a
    // bare pid, or a pin that failed. Never blocks; callable from any thread.
    virtual std::optional<bool> isRunning() = 0;
};

// Sends termination signals. The only way to a signal is through `pin`, taken
// before the identity check, so that the check and the signal are about the
// same process: a pid reused after the check cannot receive it.
//
// Contract: `pin` never returns null. Where the platform has no process handle
// the pin holds the bare pid, and the race between check and signal is as
// narrow as the platform allows. A pin that failed (no such process, no free
// descriptor) gives a handle whose `send` reports that error number.
class SignalSending {
public:
    virtual ~SignalSending() = default;
    virtual std::unique_ptr<PinnedProcess> pin(pid_t pid) = 0;
};
