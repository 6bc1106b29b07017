#include "support/ShellChild.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <grp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

ShellChild::ShellChild(const QByteArray &directory, const std::vector<std::string> &arguments,
                       Session session, const QByteArray &shell, std::optional<uid_t> user)
    : m_leadsGroup(session != Session::inherited)
{
    std::vector<char *> argv;
    for (const std::string &argument : arguments)
        argv.push_back(const_cast<char *>(argument.c_str()));
    argv.push_back(nullptr);
    // ptsname is no call for a forked child of a threaded program.
    std::string terminalName;
    if (session == Session::ownTerminal) {
        m_terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        const char *name =
            m_terminal < 0 || ::grantpt(m_terminal) != 0 || ::unlockpt(m_terminal) != 0
                ? nullptr
                : ::ptsname(m_terminal);
        if (!name)
            return;
        terminalName = name;
    }
    // The close-on-exec pipe reaches end of file when the exec succeeds or
    // the child gives up, so the caller sees the shell's own command line.
    int execPipe[2];
    if (::pipe2(execPipe, O_CLOEXEC) != 0)
        return;
    const pid_t parent = ::getpid();
    m_pid = ::fork();
    if (m_pid == 0) {
        // A change of user clears the parent-death signal: it comes first.
        if (user && (::setgroups(0, nullptr) != 0 || ::setgid(*user) != 0 || ::setuid(*user) != 0))
            ::_exit(127);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent || ::chdir(directory.constData()) != 0)
            ::_exit(127);
        sigset_t none;
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        if (session == Session::ownTerminal) {
            // Opened after setsid, the terminal becomes the controlling one.
            const int terminal = ::setsid() < 0 ? -1 : ::open(terminalName.c_str(), O_RDWR);
            if (terminal < 0)
                ::_exit(127);
            for (int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
                ::dup2(terminal, fd);
        }
        ::execv(shell.constData(), argv.data());
        ::_exit(127);
    }
    ::close(execPipe[1]);
    char byte;
    while (::read(execPipe[0], &byte, 1) < 0 && errno == EINTR) {
    }
    ::close(execPipe[0]);
}

ShellChild::~ShellChild()
{
    if (m_pid > 0) {
        // The group, where there is one, is the one this child leads: its
        // own pid, unreaped until below, names it.
        ::kill(m_leadsGroup ? -m_pid : m_pid, SIGKILL);
        while (::waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    if (m_terminal >= 0)
        ::close(m_terminal);
}

std::unique_ptr<ShellChild> sleepingChild(std::optional<uid_t> user)
{
    return std::make_unique<ShellChild>("/", std::vector<std::string>{"sleep", "60"},
                                        ShellChild::Session::inherited, "/bin/sleep", user);
}

bool hasExited(pid_t pid)
{
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == pid;
}
