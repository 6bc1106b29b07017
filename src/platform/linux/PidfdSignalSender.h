#pragma once

#include "termination/SignalSending.h"

// Sends termination signals through a pidfd (Linux 5.3 and later): `pin`
// opens one on the pid with pidfd_open, and the signal goes through it with
// pidfd_send_signal, so it reaches the pinned process or nobody; a pid reused
// after the pin can never receive it. Only where the kernel has no pidfd
// (ENOSYS) does the pin hold the bare pid and `send` fall back to kill; any
// other failure of pidfd_open, EPERM from a seccomp profile included, is the
// pin's failure and no signal is sent.
class PidfdSignalSender final : public SignalSending {
public:
    std::unique_ptr<PinnedProcess> pin(pid_t pid) override;
};
