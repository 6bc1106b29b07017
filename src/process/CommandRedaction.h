#pragma once

#include "sampling/ProcessMetric.h"

#include <QString>
#include <QStringList>

#include <optional>

// The one place where a process's argument vector and working directory are
// reduced to something that may be shown. It works by allow-listing: nothing
// of the vector survives but the executable's file name and at most one word
// out of a fixed table of eight subcommands, and nothing of the directory but
// its last component. There is deliberately no pattern that looks for
// secrets, since no argument text other than a table word is ever kept.
//
// `arguments[0]` is the program's own argv[0] and is never looked at. The
// results hold no reference into `arguments` or `workingDirectory`: the
// subcommand is the table's own text and the project a fresh copy, so the
// caller can drop the raw vector and directory as soon as these return, and
// keep only the project (the process reader does, to compare across ticks).
// Both texts keep the
// process's own characters, control characters included: whatever shows them
// passes them through printableText first.
//
// `accountDirectories` are absolute directories that give no project either:
// the current user's own home and its parent, wherever they are
// ("/var/home/<name>", "/mnt/c/Users/<name>").

// The shown command alone: the executable's file name, then the first table
// word among arguments[1...] (compared in lower case), joined by one blank;
// "未知任务" when that is empty.
QString redactedCommandText(const QString &executablePath, const QStringList &arguments);

// The project named by a working directory: its last component after "." and
// ".." are resolved, as the directory spells it; absent for "/",
// for a home directory or its parent ("/Users/<name>", "/home/<name>",
// "/root", any of `accountDirectories`) and for an empty directory.
std::optional<QString> projectOfWorkingDirectory(const std::optional<QString> &workingDirectory,
                                                 const QStringList &accountDirectories = {});
