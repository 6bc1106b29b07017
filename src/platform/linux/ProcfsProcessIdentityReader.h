#pragma once

#include "termination/ProcessIdentityReading.h"

#include <QString>

// What is at a pid now, from procfs: /proc/<pid>/stat (name, start ticks),
// /proc/<pid>/status (a thread's directory, whose Tgid is not its pid, gives
// nothing), /proc/<pid>/exe (executable, " (deleted)" kept; an exe link that
// is refused leaves the path empty, so another user's process still reads as
// another user's), the owner of /proc/<pid>, and btime of /proc/stat. The start time goes through
// the same `processStartTime` as the process metric reader's, so one process gives one equal value
// in both.
//
// All per-process reads go through one descriptor of the /proc/<pid>
// directory. The kernel binds that directory to the process it was opened
// for: once that process has gone, reads through it fail even if the pid is
// reused meanwhile, so a reading never mixes two processes.
class ProcfsProcessIdentityReader final : public ProcessIdentityReading {
public:
    explicit ProcfsProcessIdentityReader(QString procRoot = QStringLiteral("/proc"));

    std::optional<ProcessTerminationTarget> readIdentity(pid_t pid) override;

private:
    QString m_procRoot;
};
