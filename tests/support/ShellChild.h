#pragma once

// A /bin/sh child that a test starts itself, with the argument vector and
// working directory it chooses, for what only the kernel can show: a real
// process's command line, directory, CPU time, signals and exit. A test
// signals nothing but such children. The child dies with the test program
// (PR_SET_PDEATHSIG), and the handle kills and reaps it, so its pid cannot
// pass to another process while the handle lives.

#include "sampling/ProcessMetric.h"

#include <QByteArray>
#include <QList>

#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

class ShellChild {
public:
    enum class Session {
        inherited,   // in the test program's process group
        ownTerminal, // leads a session on a pseudo-terminal of its own, ended as a whole
    };

    // Runs `shell` (/bin/sh, or a link to it whose name becomes the process
    // name) with `arguments` (argv[0] first) in `directory`, as `user` when
    // one is given and with no signal blocked, and returns once the exec has
    // happened or failed. What a shell of its own session starts must end by
    // itself within a minute, in case the test program dies before the
    // handle does.
    ShellChild(const QByteArray &directory, const std::vector<std::string> &arguments,
               Session session = Session::inherited, const QByteArray &shell = "/bin/sh",
               std::optional<uid_t> user = std::nullopt);
    ~ShellChild(); // SIGKILL (to the whole group where it leads one), then reap
    ShellChild(const ShellChild &) = delete;
    ShellChild &operator=(const ShellChild &) = delete;

    pid_t pid() const { return m_pid; }
    bool started() const { return m_pid > 0; }

private:
    pid_t m_pid = -1;
    bool m_leadsGroup = false;
    int m_terminal = -1;
};

// A child that sleeps for a minute unless signalled first; SIGTERM ends it.
std::unique_ptr<ShellChild> sleepingChild(std::optional<uid_t> user = std::nullopt);

// Whether `pid`, an unreaped child of this process, has exited; it stays a
// zombie either way.
bool hasExited(pid_t pid);

// The record of `pid` among `records`, or null.
template <typename Records> auto findPid(const Records &records, pid_t pid)
{
    for (const auto &record : records) {
        if (record.identity.pid == pid)
            return &record;
    }
    return static_cast<decltype(&*records.begin())>(nullptr);
}
