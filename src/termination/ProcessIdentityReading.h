#pragma once

#include "termination/ProcessTerminationTarget.h"

#include <optional>
#include <sys/types.h>

// Reads what is at a pid now, in the terms of a termination target: identity
// (pid, start time, executable path), owner and short name.
//
// Contract: the start time must be computed exactly as the process metric
// reader computes it, so that one process gives one equal value in both, and
// must differ for a later process on the same pid. Nothing readable (no such
// process, a kernel thread, an exited process, any read failure) gives
// nothing. Stateless: called from the store's thread and, during an exit
// check, from a worker thread, possibly at once.
class ProcessIdentityReading {
public:
    virtual ~ProcessIdentityReading() = default;
    virtual std::optional<ProcessTerminationTarget> readIdentity(pid_t pid) = 0;
};
