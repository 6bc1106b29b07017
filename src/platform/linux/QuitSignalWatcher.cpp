#include "platform/QuitSignalWatcher.h"

#include <QSocketNotifier>

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// The write end of the self-pipe, for the signal handler (which may only call
// async-signal-safe functions).
std::atomic<int> g_signalWriteEnd{-1};

void forwardSignal(int signalNumber)
{
    const int fd = g_signalWriteEnd.load();
    if (fd < 0)
        return;
    const int savedErrno = errno;
    const unsigned char byte = static_cast<unsigned char>(signalNumber);
    (void)::write(fd, &byte, 1);
    errno = savedErrno;
}

} // namespace

struct QuitSignalWatcher::Pipe {
    int fds[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> notifier;
    ~Pipe()
    {
        notifier.reset();
        for (int fd : fds) {
            if (fd >= 0)
                ::close(fd);
        }
    }
};

QuitSignalWatcher::QuitSignalWatcher(QObject *parent) : QObject(parent), m_pipe(new Pipe)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, m_pipe->fds) != 0)
        return;
    g_signalWriteEnd.store(m_pipe->fds[0]);
    m_pipe->notifier = std::make_unique<QSocketNotifier>(m_pipe->fds[1], QSocketNotifier::Read);
    connect(m_pipe->notifier.get(), &QSocketNotifier::activated, this, [this] {
        unsigned char byte = 0;
        while (::read(m_pipe->fds[1], &byte, 1) == 1)
            emit quitRequested(byte);
    });
    struct sigaction action {};
    action.sa_handler = forwardSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP})
        ::sigaction(signalNumber, &action, nullptr);
}

QuitSignalWatcher::~QuitSignalWatcher()
{
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigemptyset(&action.sa_mask);
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP})
        ::sigaction(signalNumber, &action, nullptr);
    g_signalWriteEnd.store(-1);
}
