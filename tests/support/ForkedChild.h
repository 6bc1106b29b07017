#pragma once

// Child processes that the test starts itself, for the few things that only
// the kernel can show: signals, exits, identities. A test signals nothing but
// these. The child dies with the test program (PR_SET_PDEATHSIG), and the
// owner reaps it: an unreaped child's pid stays the child's, so the owner's
// own clean-up kill can never reach another process.

#include <optional>
#include <string>
#include <sys/types.h>

class ForkedChild {
public:
    // Forks and waits until the child has set itself up (SIGTERM ends it, and
    // it runs as `user` when one is given), or has exited.
    explicit ForkedChild(std::optional<uid_t> user = std::nullopt);
    ~ForkedChild(); // SIGKILL if still unreaped, then reap
    ForkedChild(const ForkedChild &) = delete;
    ForkedChild &operator=(const ForkedChild &) = delete;

    pid_t pid() const { return m_pid; }
    bool started() const { return m_pid > 0; }

    // Reaps the child, waiting at most `timeoutSeconds`; true once reaped.
    bool reap(double timeoutSeconds);
    // After reaping: the signal that ended it, if one did.
    std::optional<int> terminatingSignal() const { return m_terminatingSignal; }

private:
    pid_t m_pid = -1;
    bool m_reaped = false;
    std::optional<int> m_terminatingSignal;
};

// Whether `pid`, an unreaped child of this process, has exited; it stays a
// zombie either way.
bool hasExited(pid_t pid);
