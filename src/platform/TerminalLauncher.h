#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// The terminals to try, in order: $TERMINAL, then x-terminal-emulator, then
// the first of the common desktop terminals found on PATH. `isOnPath` tells
// whether a program name resolves (a seam for tests).
QStringList terminalCandidates(const QString &terminalVariable,
                               const std::function<bool(const QString &)> &isOnPath);

// Starts the user's terminal detached from this program. Failure is silent:
// returns whether one was started, nothing else is reported.
bool startUserTerminal();
