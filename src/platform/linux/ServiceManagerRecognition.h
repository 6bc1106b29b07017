#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>
#include <sys/types.h>

// Which processes are service managers: pid 1, and every process that runs
// pid 1's executable (the user's `systemd --user` next to the system's
// systemd). Grouping treats them as nobody's parent.
//
// Pid 1's executable link is readable only by root. Without it, the
// executable is taken from argv[0] of pid 1's command line (readable by
// everyone) with its symbolic links resolved, since init is usually started
// as /sbin/init, a link to the real binary. When even that fails, pid 1's
// name (comm) stands in, matched against process names.
struct ServiceManagerIdentity {
    std::optional<QString> executablePath; // resolved, without a " (deleted)" mark
    QString name;                          // comm of pid 1, when the path is unknown

    bool operator==(const ServiceManagerIdentity &) const = default;

    bool matches(pid_t pid, const QString &executablePath, const QString &name) const;
};

// argv[0] of a /proc/<pid>/cmdline text; nothing when it is empty.
std::optional<QByteArray> firstArgument(std::string_view procPidCmdline);

// Pid 1 as seen under `procRoot`. Resolving links reads the file system, so
// this is meant to run once per reader (see the reader's cache).
ServiceManagerIdentity readServiceManagerIdentity(const QByteArray &procRoot);
