// The process-level plumbing of the window: one instance per user, quitting
// through the event loop on a signal, and the choice of terminal.

#include "platform/ApplicationInstanceChannel.h"
#include "platform/QuitSignalWatcher.h"
#include "platform/TerminalLauncher.h"
#include "support/FixtureTable.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <cstring>
#include <future>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

sockaddr_un addressOf(const QString &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray encoded = QFile::encodeName(path);
    std::memcpy(address.sun_path, encoded.constData(), static_cast<std::size_t>(encoded.size()));
    return address;
}

// A socket at `path` as another process leaves it: listening or not.
int bindSocket(const QString &path, bool listening)
{
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = addressOf(path);
    if (::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0 ||
        (listening && ::listen(fd, 4) != 0)) {
        ::close(fd);
        return -1;
    }
    return fd;
}

ino_t inodeOf(const QString &path)
{
    struct stat status {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
}

TEST(ApplicationInstanceChannel, SecondStartAsksTheFirstToShowItsWindow)
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("kilnwarden.socket"));
    ApplicationInstanceChannel first(path);
    ASSERT_EQ(first.claim(), ApplicationInstanceChannel::Claim::primary);
    QSignalSpy shown(&first, &ApplicationInstanceChannel::showRequested);

    // The newcomer waits for the answer, which the first gives from its event
    // loop: here, this thread's.
    ApplicationInstanceChannel second(path);
    auto claim = std::async(std::launch::async, [&] { return second.claim(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.count() == 1; }));
    EXPECT_EQ(claim.get(), ApplicationInstanceChannel::Claim::forwarded);

    // A peer that is slow to write is read, not cut off: the running side
    // answers only after the request came in.
    const int peer = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = addressOf(path);
    ASSERT_EQ(::connect(peer, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    QTest::qWait(200); // accepted meanwhile, nothing sent yet
    EXPECT_EQ(shown.count(), 1);
    ASSERT_EQ(::send(peer, "show\n", 5, MSG_NOSIGNAL), 5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.count() == 2; }));
    char answer[8] = {};
    EXPECT_EQ(::recv(peer, answer, sizeof answer, 0), 3);
    EXPECT_STREQ(answer, "ok\n");
    ::close(peer);
}

TEST(ApplicationInstanceChannel, OnlyARefusedSocketOfOurOwnIsReplaced)
{
    QTemporaryDir directory;
    const QString stale = directory.filePath(QStringLiteral("stale.socket"));
    ::close(bindSocket(stale, false)); // nobody listens any more, as a crash leaves it
    EXPECT_EQ(ApplicationInstanceChannel(stale).claim(),
              ApplicationInstanceChannel::Claim::primary);

    // A listener that accepts and closes without a word is still a running
    // program: the newcomer leaves and the socket stays.
    const QString curt = directory.filePath(QStringLiteral("curt.socket"));
    const int listener = bindSocket(curt, true);
    ASSERT_GE(listener, 0);
    const ino_t inode = inodeOf(curt);
    std::thread closer([listener] {
        const int accepted = ::accept(listener, nullptr, nullptr);
        ::close(accepted);
    });
    EXPECT_EQ(ApplicationInstanceChannel(curt).claim(),
              ApplicationInstanceChannel::Claim::forwarded);
    closer.join();
    ::close(listener);
    EXPECT_EQ(inodeOf(curt), inode);

    // Another user's socket, listening or stale, an ordinary file, or a
    // directory that others may write to: never trusted, never removed.
    const QString foreignLive = directory.filePath(QStringLiteral("foreign-live.socket"));
    const QString foreignStale = directory.filePath(QStringLiteral("foreign-stale.socket"));
    const int foreignListener = bindSocket(foreignLive, true);
    ASSERT_GE(foreignListener, 0);
    ::close(bindSocket(foreignStale, false));
    constexpr uid_t kOtherUser = 4242;
    ASSERT_EQ(::getuid(), 0u) << "needs to give a file to another user";
    for (const QString &path : {foreignLive, foreignStale})
        ASSERT_EQ(::chown(QFile::encodeName(path).constData(), kOtherUser, kOtherUser), 0);
    QFile file(directory.filePath(QStringLiteral("file.socket")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    QTemporaryDir shared;
    ASSERT_EQ(::chmod(QFile::encodeName(shared.path()).constData(), 0777), 0);
    for (const QString &path : {foreignLive, foreignStale, file.fileName(),
                                shared.filePath(QStringLiteral("kilnwarden.socket"))}) {
        SCOPED_TRACE(path.toStdString());
        const ino_t before = inodeOf(path);
        EXPECT_EQ(ApplicationInstanceChannel(path).claim(),
                  ApplicationInstanceChannel::Claim::untrusted);
        EXPECT_EQ(inodeOf(path), before);
    }
    ::close(foreignListener);
}

TEST(QuitSignalWatcher, TurnsTheQuitSignalsIntoAnEvent)
{
    QuitSignalWatcher watcher;
    QSignalSpy quit(&watcher, &QuitSignalWatcher::quitRequested);
    // Only this test process is signalled, and the watcher handles it.
    for (const int signalNumber : {SIGHUP, SIGTERM, SIGINT}) {
        ASSERT_EQ(::raise(signalNumber), 0);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !quit.isEmpty(); }));
        EXPECT_EQ(quit.takeFirst().at(0).toInt(), signalNumber);
    }
}

TEST(TerminalLauncher, PrefersTheUsersChoiceThenTheDebianAlternative)
{
    const auto list = [](const QString &text) {
        return text.isEmpty() ? QStringList() : text.split(QLatin1Char(','));
    };
    for (const FixtureRow &row : fixtureTable(QStringLiteral("terminal-candidates"))) {
        const QStringList onPath = list(*row.text(1));
        EXPECT_EQ(
            terminalCandidates(*row.text(0),
                               [&](const QString &program) { return onPath.contains(program); }),
            list(*row.text(2)))
            << row.where;
    }
}

} // namespace
