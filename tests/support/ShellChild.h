#pragma once

// A /bin/sh child that a test starts itself, with the argument vector and
// working directory it chooses, for the readers that must see a real process
// (its command line, its directory, its CPU time). A test signals nothing but
// such children. The child dies with the test program (PR_SET_PDEATHSIG), and
// the handle kills and reaps it, so its pid cannot pass to another process
// while the handle lives.

#include <QByteArray>

#include <string>
#include <sys/types.h>
#include <vector>

class ShellChild {
public:
    // Runs /bin/sh with `arguments` (argv[0] first) in `directory`, and
    // returns once the exec has happened or failed.
    ShellChild(const QByteArray &directory, const std::vector<std::string> &arguments);
    ~ShellChild(); // SIGKILL, then reap
    ShellChild(const ShellChild &) = delete;
    ShellChild &operator=(const ShellChild &) = delete;

    pid_t pid() const { return m_pid; }
    bool started() const { return m_pid > 0; }

private:
    pid_t m_pid = -1;
};

// The arguments of a shell that spins on one core for as long as it lives:
// `sh -c 'while :; do :; done' <name> <extra...>`.
std::vector<std::string> spinningShellArguments(const std::vector<std::string> &extra);
