#include "platform/ApplicationInstanceChannel.h"

#include "platform/linux/UniqueFileDescriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr char kShowMessage[] = "show\n";
constexpr char kAnswer[] = "ok\n";
// How long either side waits for the other's line. The running program
// answers from its event loop, which a busy tick can hold for a moment.
constexpr int kHandOverMilliseconds = 3000;
// Connections read at once; more are closed unread (they still prove that
// this program runs).
constexpr std::size_t kMostPendingPeers = 16;

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

// A directory that only this user (or root) can change: nobody else can put
// a socket of their own at our path or swap ours. /tmp is writable by all but
// sticky, so only a file's owner may remove or rename it.
enum class Directory { missing, trusted, foreign };

Directory inspectDirectory(const QString &socketPath)
{
    const QByteArray directory = QFile::encodeName(QFileInfo(socketPath).absolutePath());
    struct stat status {};
    if (::stat(directory.constData(), &status) != 0 || !S_ISDIR(status.st_mode))
        return Directory::missing;
    if (status.st_uid != ::getuid() && status.st_uid != 0)
        return Directory::foreign;
    const bool closed =
        (status.st_mode & (S_IWGRP | S_IWOTH)) == 0 || (status.st_mode & S_ISVTX) != 0;
    return closed ? Directory::trusted : Directory::foreign;
}

enum class SocketFile { missing, own, foreign };

// What is at the path now; a socket is this program's only when it is this
// user's and nobody else may write to it (connect), as `claim` makes it.
SocketFile inspectSocketFile(const char *path)
{
    struct stat status {};
    if (::lstat(path, &status) != 0)
        return errno == ENOENT ? SocketFile::missing : SocketFile::foreign;
    if (!S_ISSOCK(status.st_mode) || status.st_uid != ::getuid() ||
        (status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return SocketFile::foreign;
    return SocketFile::own;
}

enum class Contact { forwarded, refused, foreign, failed };

// Asks a running instance to show its window. Only a refused connection
// (nobody listens, or the file went away) says that no instance runs.
Contact tellRunningInstance(const sockaddr_un &address)
{
    UniqueFileDescriptor socket = newSocket();
    if (!socket.isValid())
        return Contact::failed;
    if (::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return errno == ECONNREFUSED || errno == ENOENT ? Contact::refused : Contact::failed;
    // The path was checked before connecting; the listener's own identity
    // closes the gap between that check and the connection.
    ucred peer{};
    socklen_t length = sizeof peer;
    if (::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &peer, &length) != 0 ||
        peer.uid != ::getuid())
        return Contact::foreign;
    (void)::send(socket.get(), kShowMessage, sizeof kShowMessage - 1, MSG_NOSIGNAL);
    // Waits for the answer so that the request is read before this process
    // leaves. A running program that does not answer in time is still running:
    // this start leaves all the same.
    pollfd waiting{socket.get(), POLLIN, 0};
    if (::poll(&waiting, 1, kHandOverMilliseconds) > 0) {
        char answer[8];
        (void)::recv(socket.get(), answer, sizeof answer, MSG_DONTWAIT);
    }
    return Contact::forwarded;
}

} // namespace

struct ApplicationInstanceChannel::Listener {
    struct Peer {
        UniqueFileDescriptor socket;
        QSocketNotifier *notifier = nullptr; // deleted later: it may be signalling
        QByteArray received;
    };

    UniqueFileDescriptor socket;
    std::unique_ptr<QSocketNotifier> notifier;
    std::vector<std::unique_ptr<Peer>> peers;
};

ApplicationInstanceChannel::ApplicationInstanceChannel(QString socketPath, QObject *parent)
    : QObject(parent), m_socketPath(std::move(socketPath))
{
}

ApplicationInstanceChannel::~ApplicationInstanceChannel()
{
    if (m_listener) {
        for (const auto &peer : m_listener->peers)
            delete peer->notifier;
        m_listener->peers.clear();
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

void ApplicationInstanceChannel::acceptConnections()
{
    for (;;) {
        UniqueFileDescriptor accepted(
            ::accept4(m_listener->socket.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!accepted.isValid())
            return;
        if (m_listener->peers.size() >= kMostPendingPeers) {
            emit showRequested();
            continue;
        }
        auto peer = std::make_unique<Listener::Peer>();
        peer->socket = std::move(accepted);
        peer->notifier = new QSocketNotifier(peer->socket.get(), QSocketNotifier::Read);
        Listener::Peer *raw = peer.get();
        m_listener->peers.push_back(std::move(peer));

        // Any connection is a request to show: it is answered once its line
        // is in, the peer has closed, or it has waited long enough.
        auto finish = [this, raw] {
            auto &peers = m_listener->peers;
            const auto found = std::find_if(peers.begin(), peers.end(),
                                            [raw](const auto &each) { return each.get() == raw; });
            if (found == peers.end())
                return;
            (void)::send(raw->socket.get(), kAnswer, sizeof kAnswer - 1,
                         MSG_NOSIGNAL | MSG_DONTWAIT);
            raw->notifier->setEnabled(false);
            raw->notifier->deleteLater();
            peers.erase(found);
            emit showRequested();
        };
        auto *timeout = new QTimer(raw->notifier);
        timeout->setSingleShot(true);
        connect(timeout, &QTimer::timeout, this, finish);
        timeout->start(kHandOverMilliseconds);
        connect(raw->notifier, &QSocketNotifier::activated, this, [raw, finish] {
            char buffer[64];
            const ssize_t count = ::recv(raw->socket.get(), buffer, sizeof buffer, 0);
            if (count < 0 && (errno == EAGAIN || errno == EINTR))
                return;
            if (count > 0)
                raw->received.append(buffer, count);
            if (count <= 0 || raw->received.contains('\n') || raw->received.size() > 256)
                finish();
        });
    }
}

ApplicationInstanceChannel::Claim ApplicationInstanceChannel::claim()
{
    if (m_listener)
        return Claim::primary;
    sockaddr_un address{};
    if (!fillAddress(m_socketPath, address))
        return Claim::alone;
    switch (inspectDirectory(m_socketPath)) {
    case Directory::missing:
        return Claim::alone;
    case Directory::foreign:
        return Claim::untrusted;
    case Directory::trusted:
        break;
    }

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
            connect(m_listener->notifier.get(), &QSocketNotifier::activated, this,
                    &ApplicationInstanceChannel::acceptConnections);
            return Claim::primary;
        }
        if (errno != EADDRINUSE)
            return Claim::alone;
        switch (inspectSocketFile(address.sun_path)) {
        case SocketFile::missing:
            continue; // gone since the bind: try again
        case SocketFile::foreign:
            return Claim::untrusted;
        case SocketFile::own:
            break;
        }
        switch (tellRunningInstance(address)) {
        case Contact::forwarded:
            return Claim::forwarded;
        case Contact::foreign:
            return Claim::untrusted;
        case Contact::failed:
            return Claim::alone;
        case Contact::refused:
            break;
        }
        // Nobody listens: a crashed run left its socket file, ours (checked
        // above), and only that is removed.
        ::unlink(address.sun_path);
    }
    return Claim::alone;
}
