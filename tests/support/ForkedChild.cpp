#include "support/ForkedChild.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <grp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Only async-signal-safe calls from here on: the test program has threads.
[[noreturn]] void runChild(std::optional<uid_t> user, int readyFd)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (user && (::setgroups(0, nullptr) != 0 || ::setgid(*user) != 0 || ::setuid(*user) != 0))
        ::_exit(126);
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(SIGTERM, &action, nullptr);
    // The test program may block SIGTERM in some thread; make sure it arrives.
    sigset_t unblock;
    ::sigemptyset(&unblock);
    ::sigaddset(&unblock, SIGTERM);
    ::sigprocmask(SIG_UNBLOCK, &unblock, nullptr);

    const char ready = 'r';
    [[maybe_unused]] ssize_t written = ::write(readyFd, &ready, 1);
    ::close(readyFd);

    for (;;)
        ::pause();
}

} // namespace

ForkedChild::ForkedChild(std::optional<uid_t> user)
{
    int ready[2];
    if (::pipe2(ready, O_CLOEXEC) != 0)
        return;
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(ready[0]);
        runChild(user, ready[1]);
    }
    ::close(ready[1]);
    if (pid < 0) {
        ::close(ready[0]);
        return;
    }
    m_pid = pid;
    // One byte once set up, or end of file if the child exited first.
    char byte = 0;
    while (::read(ready[0], &byte, 1) < 0 && errno == EINTR) {
    }
    ::close(ready[0]);
}

ForkedChild::~ForkedChild()
{
    if (m_pid <= 0 || m_reaped)
        return;
    ::kill(m_pid, SIGKILL); // our own unreaped child: the pid is still its own
    int status = 0;
    while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
    }
}

bool hasExited(pid_t pid)
{
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == pid;
}

bool ForkedChild::reap(double timeoutSeconds)
{
    if (m_pid <= 0)
        return false;
    if (m_reaped)
        return true;
    const auto deadline =
        std::chrono::steady_clock::now() + std::chrono::duration<double>(timeoutSeconds);
    do {
        int status = 0;
        const pid_t result = ::waitpid(m_pid, &status, WNOHANG);
        if (result == m_pid) {
            m_reaped = true;
            if (WIFSIGNALED(status))
                m_terminatingSignal = WTERMSIG(status);
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    } while (std::chrono::steady_clock::now() < deadline);
    return false;
}
