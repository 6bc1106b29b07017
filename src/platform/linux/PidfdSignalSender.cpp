#include "platform/linux/PidfdSignalSender.h"

#include "platform/linux/UniqueFileDescriptor.h"

#include <cerrno>
#include <csignal>

#include <poll.h>
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

    // A pidfd polls readable once every thread of its process has exited,
    // reaped or not: a zombie has exited. What the process's files say
    // (a deleted binary, a process turned non-dumpable) plays no part.
    std::optional<bool> isRunning() override
    {
        pollfd entry{m_pidfd.get(), POLLIN, 0};
        int ready = 0;
        do {
            ready = ::poll(&entry, 1, 0);
        } while (ready < 0 && errno == EINTR);
        if (ready < 0 || (entry.revents & POLLNVAL) != 0)
            return std::nullopt;
        return ready == 0;
    }

private:
    UniqueFileDescriptor m_pidfd;
};

// Kernels before 5.3: the bare pid, and the race between the identity check
// and kill that only a pidfd closes. It cannot tell whether the process runs.
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
    std::optional<bool> isRunning() override { return std::nullopt; }

private:
    pid_t m_pid;
};

// The pin failed (the process had gone, or no descriptor was free): sending
// reports that error instead of reaching for the pid another way.
class FailedPin final : public PinnedProcess {
public:
    explicit FailedPin(int error) : m_error(error) {}
    int send(ProcessTerminationSignal) override { return m_error; }
    std::optional<bool> isRunning() override { return std::nullopt; }

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
    // Only a kernel without the call falls back to kill. pidfd_open itself
    // never fails with EPERM, but a seccomp profile that refuses it does; that
    // kernel may well reuse pids under us, so the failure stands (the
    // signal-failure text) rather than opening the race kill leaves.
    if (error == ENOSYS)
        return std::make_unique<BarePidPinnedProcess>(pid);
    return std::make_unique<FailedPin>(error);
}
