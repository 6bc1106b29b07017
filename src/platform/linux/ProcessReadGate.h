#pragma once

#include <cstdint>
#include <optional>
#include <sys/types.h>

// Whether a known process is read in full on this tick, or keeps its last
// record with only its resident size renewed. A process changes its own
// executable, directory, arguments, owner and I/O counters only by running,
// and running moves its CPU-time clock; so a process whose clock stands
// still has nothing new to read but its memory, which the kernel can reclaim
// from it at any time. What others change about a process that does not run
// (its cgroup, a rename of its directory or executable, its new parent when
// its parent leaves) is caught by the first ticks of a new process, by the
// re-read of the children of a process that left, and by the sweep: each kept
// process has a slot among `kSweepTicks`, and is read in full on the ticks
// of its slot.
inline constexpr unsigned kSweepTicks = 10;
// A new process is read in full on the tick it appears and this many after:
// a launcher or shell settles its cgroup and process group from outside
// while it starts.
inline constexpr unsigned kYoungTicks = 2;

struct ProcessReadFacts {
    std::optional<std::uint64_t> lastClock; // CPU nanoseconds before the last full read
    std::optional<std::uint64_t> clock;     // CPU nanoseconds now
    unsigned ticksSinceFirstRead = 0;
    unsigned sweepSlot = 0;
    unsigned tick = 0;
};

// True when the process must be read in full: a clock that cannot be read
// or has moved, a young process, or its sweep slot.
bool needsFullRead(const ProcessReadFacts &facts);

// Nanoseconds that any thread of `pid` has run, from the process CPU-time
// clock; nothing when the pid holds no process now or its clock may not be
// read. The clock belongs to whichever process holds the pid at the call.
std::optional<std::uint64_t> processCPUClockNanoseconds(pid_t pid);
