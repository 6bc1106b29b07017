// The process-level plumbing of the window: one instance per user, quitting
// through the event loop on a signal, and the choice of terminal.

#include "platform/ApplicationInstanceChannel.h"
#include "platform/QuitSignalWatcher.h"
#include "platform/TerminalLauncher.h"
#include "presentation/PresentationTesting.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <csignal>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

TEST(ApplicationInstanceChannel, SecondStartAsksTheFirstToShowItsWindow)
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("kilnwarden.socket"));
    ApplicationInstanceChannel first(path);
    ASSERT_EQ(first.claim(), ApplicationInstanceChannel::Claim::primary);
    QSignalSpy shown(&first, &ApplicationInstanceChannel::showRequested);

    ApplicationInstanceChannel second(path);
    EXPECT_EQ(second.claim(), ApplicationInstanceChannel::Claim::forwarded);
    EXPECT_TRUE(waitFor([&] { return shown.count() == 1; }));
}

TEST(ApplicationInstanceChannel, AStaleSocketIsReplacedAnOrdinaryFileNeverRemoved)
{
    QTemporaryDir directory;
    const QString stale = directory.filePath(QStringLiteral("stale.socket"));
    {
        // A socket file that nobody listens on any more, as a crash leaves it.
        const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray encoded = QFile::encodeName(stale);
        std::memcpy(address.sun_path, encoded.constData(),
                    static_cast<std::size_t>(encoded.size()));
        ASSERT_EQ(::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        ::close(fd);
    }
    EXPECT_EQ(ApplicationInstanceChannel(stale).claim(),
              ApplicationInstanceChannel::Claim::primary);

    QFile file(directory.filePath(QStringLiteral("file.socket")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_EQ(ApplicationInstanceChannel(file.fileName()).claim(),
              ApplicationInstanceChannel::Claim::alone);
    EXPECT_TRUE(file.exists());
}

TEST(QuitSignalWatcher, TurnsTheQuitSignalsIntoAnEvent)
{
    QuitSignalWatcher watcher;
    QSignalSpy quit(&watcher, &QuitSignalWatcher::quitRequested);
    // Only this test process is signalled, and the watcher handles it.
    for (const int signalNumber : {SIGHUP, SIGTERM, SIGINT}) {
        ASSERT_EQ(::raise(signalNumber), 0);
        ASSERT_TRUE(waitFor([&] { return !quit.isEmpty(); }));
        EXPECT_EQ(quit.takeFirst().at(0).toInt(), signalNumber);
    }
}

TEST(TerminalLauncher, PrefersTheUsersChoiceThenTheDebianAlternative)
{
    struct Row {
        QString variable;
        QStringList onPath;
        QStringList expected;
    };
    const Row rows[] = {
        {"kitty --single-instance",
         {"x-terminal-emulator", "xterm"},
         {"kitty --single-instance", "x-terminal-emulator", "xterm"}},
        {"", {"konsole", "xterm"}, {"konsole"}},
        {"  ", {"xfce4-terminal", "gnome-terminal"}, {"gnome-terminal"}},
        {"", {}, {}},
    };
    for (const Row &row : rows) {
        const QStringList candidates = terminalCandidates(
            row.variable, [&](const QString &program) { return row.onPath.contains(program); });
        EXPECT_EQ(candidates, row.expected) << row.variable.toStdString();
    }
}

} // namespace
