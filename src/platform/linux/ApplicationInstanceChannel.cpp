#include "platform/ApplicationInstanceChannel.h"

#include "platform/linux/UniqueFileDescriptor.h"

#include <QDir>
#include <QFile>
#include <QSocketNotifier>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr char kShowMessage[] = "show\n";

bool fillAddress(const QString &path, sockaddr_un &address)
{
    const QByteArray encoded = QFile::encodeName(path);
    std::memset(&address, 0, sizeof address);
    address.sun_family = AF_UNIX;
    if (encoded.isEmpty() || static_cast<std::size_t>(encoded.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, encoded.constData(), static_cast<std::size_t>(encoded.size()));
    return true;
}

UniqueFileDescriptor newSocket()
{
    return UniqueFileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

// Asks a running instance to show its window; false when nobody answers.
bool tellRunningInstance(const sockaddr_un &address)
{
    UniqueFileDescriptor socket = newSocket();
    if (!socket.isValid())
        return false;
    if (::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return false;
    const ssize_t written =
        ::send(socket.get(), kShowMessage, sizeof kShowMessage - 1, MSG_NOSIGNAL);
    return written == static_cast<ssize_t>(sizeof kShowMessage - 1);
}

} // namespace

struct ApplicationInstanceChannel::Listener {
    UniqueFileDescriptor socket;
    std::unique_ptr<QSocketNotifier> notifier;
};

ApplicationInstanceChannel::ApplicationInstanceChannel(QString socketPath, QObject *parent)
    : QObject(parent), m_socketPath(std::move(socketPath))
{
}

ApplicationInstanceChannel::~ApplicationInstanceChannel()
{
    if (m_listener) {
        m_listener->notifier.reset();
        m_listener->socket = UniqueFileDescriptor();
        ::unlink(QFile::encodeName(m_socketPath).constData());
    }
}

QString ApplicationInstanceChannel::defaultSocketPath()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QDir(QFile::decodeName(runtime)).exists())
        return QFile::decodeName(runtime) + QStringLiteral("/kilnwarden.socket");
    return QStringLiteral("/tmp/kilnwarden-%1.socket").arg(::getuid());
}

ApplicationInstanceChannel::Claim ApplicationInstanceChannel::claim()
{
    if (m_listener)
        return Claim::primary;
    sockaddr_un address{};
    if (!fillAddress(m_socketPath, address))
        return Claim::alone;

    // Two tries: the second follows the removal of a stale socket file.
    for (int attempt = 0; attempt < 2; ++attempt) {
        UniqueFileDescriptor socket = newSocket();
        if (!socket.isValid())
            return Claim::alone;
        const mode_t previousMask = ::umask(0077); // the socket is the user's alone
        const int bound =
            ::bind(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address);
        ::umask(previousMask);
        if (bound == 0) {
            if (::listen(socket.get(), 8) != 0)
                return Claim::alone;
            ::fcntl(socket.get(), F_SETFL, ::fcntl(socket.get(), F_GETFL) | O_NONBLOCK);
            m_listener = std::make_unique<Listener>();
            m_listener->socket = std::move(socket);
            m_listener->notifier =
                std::make_unique<QSocketNotifier>(m_listener->socket.get(), QSocketNotifier::Read);
            connect(m_listener->notifier.get(), &QSocketNotifier::activated, this, [this] {
                for (;;) {
                    UniqueFileDescriptor peer(
                        ::accept4(m_listener->socket.get(), nullptr, nullptr, SOCK_CLOEXEC));
                    if (!peer.isValid())
                        break;
                    // Any connection is a request to show; the message is a courtesy.
                    char buffer[16];
                    (void)::recv(peer.get(), buffer, sizeof buffer, MSG_DONTWAIT);
                    emit showRequested();
                }
            });
            return Claim::primary;
        }
        if (errno != EADDRINUSE)
            return Claim::alone;
        if (tellRunningInstance(address))
            return Claim::forwarded;
        // Nobody listens: a crashed run left its socket file. Only a socket is
        // ever removed, never a file of another kind at that path.
        struct stat status {};
        if (::lstat(address.sun_path, &status) != 0 || !S_ISSOCK(status.st_mode) ||
            status.st_uid != ::getuid())
            return Claim::alone;
        ::unlink(address.sun_path);
    }
    return Claim::alone;
}
