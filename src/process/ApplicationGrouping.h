#pragma once

#include "process/ApplicationLoad.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <vector>

// Folds one tick's processes into load sources. Pure: no state, no system
// call. A process joins the application of the topmost ancestor that has an
// application identity (`applicationPath`); without one anywhere up its chain
// it joins the lineage of its topmost ancestor. Only processes in the list
// count as ancestors, and service managers (`isServiceManager`) never do, so
// the processes they start begin lineages of their own. A terminal session's
// leader (`leadsTerminalSession`) roots its lineage: the walk stops at it, and
// neither it nor a process below it in its control group gives an identity,
// so each terminal tab or pane is a source named after its busiest process.
//
// The result is ordered by `loadScore`, highest first, then by `application`
// in code-point order. A list holding a pid twice is outside the contract; it
// still gives loads, with the first record of the pid acting as the parent.
std::vector<ApplicationLoad> groupApplicationLoads(const QList<ProcessMetric> &processes);

// How a source keyed by an application identity is named, unless a member's
// name or command says Codex. The platform reader may give the name itself
// (`applicationName`: a desktop entry's Name on Linux), and that wins;
// otherwise the path's last component names it, without its extension and with
// every " Helper" removed (a macOS bundle: "Editor Helper (Renderer).app" gives
// "Editor (Renderer)").
QString applicationNameForPath(const QString &applicationPath, const QString &platformName);

// FNV-1a, 64 bits, over the UTF-8 bytes of `text`.
std::uint64_t fnv1a64(const QString &text);
