#include "platform/linux/PidfdSignalSender.h"

#include "platform/linux/UniqueFileDescriptor.h"

#include <cerrno>
#include <csignal>

#include <sys/syscall.h>
#include <unistd.h>

// glibc wraps these two calls only since 2.36; the numbers are the same on
// every architecture that has them.
#ifndef SYS_pidfd_open
#define SYS_pidfd_open 434
#endif
#ifndef SYS_pidfd_send_signal
#define SYS_pidfd_send_signal 424
#endif

namespace {

int signalNumber(ProcessTerminationSignal signal)
{
    return signal == ProcessTerminationSignal::forced ? SIGKILL : SIGTERM;
}

class PidfdPinnedProcess final : public PinnedProcess {
public:
    explicit PidfdPinnedProcess(UniqueFileDescriptor pidfd) : m_pidfd(std::move(pidfd)) {}

    int send(ProcessTerminationSignal signal) override
    {
        if (::syscall(SYS_pidfd_send_signal, m_pidfd.get(), signalNumber(signal), nullptr, 0) == 0)
            return 0;
        return errno;
    }

private:
    UniqueFileDescriptor m_pidfd;
};

// Kernels before 5.3: the bare pid, and the race between the identity check
// and kill that only a pidfd closes.
class BarePidPinnedProcess final : public PinnedProcess {
public:
    explicit BarePidPinnedProcess(pid_t pid) : m_pid(pid) {}

    int send(ProcessTerminationSignal signal) override
    {
        if (m_pid < 2) // never a process group or every process
            return EINVAL;
        if (::kill(m_pid, signalNumber(signal)) == 0)
            return 0;
        return errno;
    }

private:
    pid_t m_pid;
};

// The pin failed (the process had gone, or no descriptor was free): sending
// reports that error instead of reaching for the pid another way.
class FailedPin final : public PinnedProcess {
public:
    explicit FailedPin(int error) : m_error(error) {}
    int send(ProcessTerminationSignal) override { return m_error; }

private:
    int m_error;
};

} // namespace

std::unique_ptr<PinnedProcess> PidfdSignalSender::pin(pid_t pid)
{
    if (pid < 2)
        return std::make_unique<FailedPin>(EINVAL);
    const long fd = ::syscall(SYS_pidfd_open, pid, 0);
    if (fd >= 0)
        return std::make_unique<PidfdPinnedProcess>(UniqueFileDescriptor(static_cast<int>(fd)));
    const int error = errno;
    // pidfd_open itself never fails with EPERM; a seccomp filter that denies
    // it (older container runtimes) does, and means "no pidfd" as ENOSYS does.
    if (error == ENOSYS || error == EPERM)
        return std::make_unique<BarePidPinnedProcess>(pid);
    return std::make_unique<FailedPin>(error);
}
