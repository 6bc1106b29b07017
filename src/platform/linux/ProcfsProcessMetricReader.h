#pragma once

#include "platform/linux/DesktopApplicationIdentities.h"
#include "platform/linux/ProcPidDirectory.h"
#include "platform/linux/ProcPidStat.h"
#include "process/RawProcessMetric.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <deque>
#include <optional>
#include <sys/types.h>
#include <unordered_map>
#include <utility>
#include <vector>

// The current user's processes from <procRoot>/<pid>. The owner test comes
// first and costs one stat of the pid directory, so another user's process
// costs nothing more; an owned one is then read through its open directory:
// exe, stat, statm, io, cgroup, cmdline, cwd, but only when it may have
// changed (see ProcessReadGate). A process that vanishes or fails at any
// step is left out, except that an unreadable io counts 0 bytes, and an
// unreadable cwd gives no project. The argument vector and the working
// directory go only into the command redaction and end there: what is kept
// between ticks is the project it made.
//
// The directory and the files read on every tick stay open from one tick to
// the next, for as long as the process is there (see ProcPidDirectory): a
// known process whose CPU-time clock stood still costs two system calls a
// tick (its clock and its statm), one read in full eight (an owner test
// through the open directory, two links and five reads). Whatever a tick
// does not find again, by pid and start time, is closed at its end. The descriptors
// kept are bounded by the open-file limit (raised toward the hard limit when
// the reader is made); beyond that, and whenever an open fails for want of
// descriptors, processes are read by opening and closing their files at once.
//
// The application identity comes from the systemd unit named in
// /proc/<pid>/cgroup and the desktop entries under `applicationDataDirectories`
// (the XDG data directories): `applicationPath` is the entry's path, else the
// ApplicationID, and `applicationName` the entry's Name. Service managers are
// pid 1 and the user's own systemd, recognised by its cgroup. `homeDirectory`
// is the current user's home with its links resolved: it and its parent give
// no project.
class ProcfsProcessMetricReader final : public RawProcessMetricReading {
public:
    explicit ProcfsProcessMetricReader(QString procRoot = QStringLiteral("/proc"),
                                       QStringList applicationDataDirectories = {},
                                       std::optional<QString> homeDirectory = std::nullopt);

    void visitMetrics(TimePoint now, const Visitor &visit) override;

private:
    // What a process shows that others can change while it does not run,
    // with the stat line it was read with: the sweep reads it again and
    // compares, instead of reading and redacting the whole process. Of the
    // working directory only the project is kept, as the redaction made it.
    struct OutsideView {
        QByteArray executable;
        ProcPidStat stat;
        std::optional<QByteArray> controlGroup;
        std::optional<QString> project;

        bool operator==(const OutsideView &) const = default;
    };
    struct KeptProcess {
        ProcPidDirectory directory;
        unsigned long long startTicks = 0;
        unsigned tick = 0;                  // the last tick that read it
        std::optional<std::uint64_t> clock; // CPU nanoseconds before the last full read
        unsigned ticksSinceFirstRead = 0;
        unsigned sweepSlot = 0;
        RawProcessMetric record; // the last full read
        OutsideView view;        // as the last full read found it
    };
    // A pid of the user's with neither an executable nor memory: a kernel
    // thread (to root) or a process that has exited and waits for its parent.
    // Neither can become a process to read; while it holds the pid it costs
    // one read of its statm a tick, not an open, a link and a close.
    struct EmptyProcess {
        ProcPidDirectory directory;
        unsigned tick = 0; // the last tick that found it
        unsigned sweepSlot = 0;
    };
    // A process listed on a tick, by pid and start time.
    using ListedProcess = std::pair<pid_t, unsigned long long>;

    // The process's record for this tick, where it lives (a kept process's
    // own, or one of `m_unkept`); nothing when it is not one to show.
    // `carried` tells whether the record is the last full read with this
    // tick's resident size.
    const RawProcessMetric *readProcess(pid_t pid, long long bootTimeSeconds, TimePoint now,
                                        bool fullRead, bool &carried,
                                        unsigned long long &startTicks);
    // Gives the last record of a kept process whose clock stood still this
    // tick's resident size; false when its directory no longer reads.
    bool carryRecord(KeptProcess &kept, long long bootTimeSeconds, TimePoint now);
    // `view`, when given, receives what the read was made from.
    std::optional<RawProcessMetric>
    readOpenProcess(ProcPidDirectory &directory, pid_t pid, uid_t owner, long long bootTimeSeconds,
                    TimePoint now, bool keep, unsigned long long &startTicks, OutsideView *view);
    // Nothing without an executable or a stat line: a kernel thread, or a
    // process gone or going.
    std::optional<OutsideView> readOutsideView(ProcPidDirectory &directory, bool keep) const;
    // Closes the empty processes and half of the kept ones, and keeps no more
    // than that from now on. What this tick found so far is copied out first.
    void relieveDescriptorShortage();
    // The resident size from statm; nothing when it cannot be read or parsed.
    std::optional<std::uint64_t> readResidentBytes(ProcPidDirectory &directory, bool keep) const;

    QByteArray m_procRoot;
    QByteArray m_pidPath; // reused for every pid: "<procRoot>/<pid>"
    uid_t m_userID;
    long m_clockTicksPerSecond;
    std::uint64_t m_pageSize;
    DesktopApplicationIdentities m_applications;
    QStringList m_accountDirectories; // the home and its parent
    std::unordered_map<pid_t, KeptProcess> m_kept;
    std::unordered_map<pid_t, EmptyProcess> m_empty;
    std::size_t m_keptCapacity = 0;
    unsigned m_tick = 0;
    unsigned m_nextSweepSlot = 0;
    std::vector<ListedProcess> m_listed; // last tick's records, sorted
    // This tick's records, in the listing's order: kept processes' own, or
    // those of `m_unkept`; none for one lost on the way.
    std::vector<const RawProcessMetric *> m_records;
    std::deque<RawProcessMetric> m_unkept; // this tick's records of processes not kept
};

// The current user's home directory from the password database, with its
// links resolved; nothing when it cannot be found.
std::optional<QString> currentUserHomeDirectory();
