#pragma once

#include "sampling/TimePoint.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>
#include <sys/types.h>

// The fields of /proc/<pid>/stat that the process readers use.
struct ProcPidStat {
    QString name;                       // comm: between the first "(" and the last ")"
    pid_t parentPID = 0;                // field 4
    pid_t processGroupID = 0;           // field 5
    pid_t sessionID = 0;                // field 6
    int terminal = 0;                   // field 7, tty_nr: 0 without a controlling terminal
    unsigned long long userTicks = 0;   // field 14, utime, clock ticks
    unsigned long long systemTicks = 0; // field 15, stime, clock ticks
    unsigned long long startTicks = 0;  // field 22, starttime, clock ticks since boot

    bool operator==(const ProcPidStat &) const = default;
};

// The name may hold blanks, parentheses and even a ")" of its own, so the
// fields are counted from the last ")". Nothing for truncated or malformed text.
std::optional<ProcPidStat> parseProcPidStat(std::string_view text);

// btime + starttime / ticks-per-second, in one expression shared by every
// reader, so that one process gives one equal start time wherever it is read.
TimePoint processStartTime(long long bootTimeSeconds, unsigned long long startTicks,
                           long clockTicksPerSecond);

// (utime + stime) clock ticks as nanoseconds; nothing on overflow or a
// non-positive tick rate, never a wrapped number.
std::optional<unsigned long long> cpuTicksToNanoseconds(unsigned long long userTicks,
                                                        unsigned long long systemTicks,
                                                        long clockTicksPerSecond);

// The owner of /proc/<pid> (one stat call): the process's real user.
std::optional<uid_t> procPidOwner(const QByteArray &pidDirectory);

// The process start ticks of the machine: sysconf(_SC_CLK_TCK).
long systemClockTicksPerSecond();
