#include "platform/TerminalLauncher.h"

#include <QProcess>
#include <QStandardPaths>

QStringList terminalCandidates(const QString &terminalVariable,
                               const std::function<bool(const QString &)> &isOnPath)
{
    QStringList candidates;
    const QString chosen = terminalVariable.trimmed();
    if (!chosen.isEmpty())
        candidates << chosen;
    if (isOnPath(QStringLiteral("x-terminal-emulator")))
        candidates << QStringLiteral("x-terminal-emulator");
    for (const char *name : {"gnome-terminal", "konsole", "xfce4-terminal", "xterm"}) {
        const QString program = QString::fromLatin1(name);
        if (isOnPath(program)) {
            candidates << program;
            break;
        }
    }
    return candidates;
}

bool startUserTerminal()
{
    const QStringList candidates =
        terminalCandidates(qEnvironmentVariable("TERMINAL"), [](const QString &program) {
            return !QStandardPaths::findExecutable(program).isEmpty();
        });
    for (const QString &candidate : candidates) {
        // $TERMINAL may carry arguments ("kitty --single-instance").
        QStringList words = QProcess::splitCommand(candidate);
        if (words.isEmpty())
            continue;
        const QString program = words.takeFirst();
        if (QProcess::startDetached(program, words))
            return true;
    }
    return false;
}
