#include "support/ShellChild.h"

#include <cerrno>

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

ShellChild::ShellChild(const QByteArray &directory, const std::vector<std::string> &arguments)
{
    std::vector<char *> argv;
    for (const std::string &argument : arguments)
        argv.push_back(const_cast<char *>(argument.c_str()));
    argv.push_back(nullptr);
    // The close-on-exec pipe reaches end of file when the exec succeeds or
    // the child gives up, so the caller sees the shell's own command line.
    int execPipe[2];
    if (::pipe2(execPipe, O_CLOEXEC) != 0)
        return;
    const pid_t parent = ::getpid();
    m_pid = ::fork();
    if (m_pid == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() == parent && ::chdir(directory.constData()) == 0)
            ::execv("/bin/sh", argv.data());
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
        ::kill(m_pid, SIGKILL);
        while (::waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
}

std::vector<std::string> spinningShellArguments(const std::vector<std::string> &extra)
{
    std::vector<std::string> arguments{"sh", "-c", "while :; do :; done", "kw-spinner"};
    arguments.insert(arguments.end(), extra.begin(), extra.end());
    return arguments;
}
