#pragma once

#include "sampling/TimePoint.h"

#include <QString>

#include <sys/types.h>

#include <cstdint>
#include <optional>

// What tells a process apart from a later one that reuses its number. A
// process is always identified by all three fields, never by its pid alone.
struct ProcessIdentity {
    pid_t pid = 0;
    TimePoint startTime;    // process start, microsecond precision from the kernel
    QString executablePath; // absolute path of the executable

    bool operator==(const ProcessIdentity &) const = default;
};

// The only trace of a process's argument vector and working directory.
struct RedactedCommandSummary {
    QString command;                // what may be shown as the process's command
    std::optional<QString> project; // last component of the working directory, when meaningful

    bool operator==(const RedactedCommandSummary &) const = default;
};

// One process at one tick, with rates.
struct ProcessMetric {
    ProcessIdentity identity;
    pid_t parentPID = 0;
    pid_t processGroupID = 0;
    uid_t userID = 0;
    // A service manager (launchd's role: pid 1, and on Linux every process that
    // runs pid 1's executable, such as `systemd --user`) is nobody's parent for
    // grouping: the processes it starts begin lineages of their own. Set by the
    // platform reader; it sits in what would otherwise be padding.
    bool isServiceManager = false;
    // Leads its session and has a controlling terminal (a terminal tab, a tmux
    // pane, an editor's terminal): it roots a lineage of its own and takes no
    // application identity from the control group it shares with what runs
    // below it. Set by the platform reader.
    bool leadsTerminalSession = false;
    QString name;
    // The application identity that keys a load source: an application bundle
    // on macOS, a desktop entry path or application id on Linux.
    std::optional<QString> applicationPath;
    // The platform's own display name for `applicationPath`, where it has one
    // (Linux: the desktop entry's Name). Empty when it has none, and the
    // grouping then names the source from the path (a bundle's file name). A
    // plain text rather than an optional one: an hour of history holds a
    // million of these records, and an empty QString allocates nothing.
    QString applicationName;
    // Where the platform places the process for resource control (the
    // systemd cgroup path on Linux), compared only for equality: below a
    // terminal session, a process in its leader's group takes no application
    // identity. Empty when unknown.
    QString controlGroup;
    RedactedCommandSummary command;
    double cpuPercent = 0.0; // one core = 100, not capped
    std::uint64_t residentBytes = 0;
    double diskBytesPerSecond = 0.0;
    double duration = 0.0; // seconds since startTime, never negative

    bool operator==(const ProcessMetric &) const = default;
};

// "<pid>-<start>", the start in seconds since 1970 in the shortest decimal form
// that reads back as the same 64-bit float, with ".0" on whole numbers. Process
// node ids and termination keys are both this, so the two always agree.
QString processNodeKey(pid_t pid, TimePoint startTime);
