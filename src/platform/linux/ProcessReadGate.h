#pragma once

#include <cstdint>
#include <optional>
#include <sys/types.h>

// How much of a known process a tick reads. A process changes its own
// executable, directory, arguments, owner and I/O counters only by running,
// and running moves its CPU-time clock; so a process whose clock stands
// still has nothing new to read but its memory, which the kernel can reclaim
// from it at any time. What others change about a process that does not run
// (its cgroup, a rename of its directory or executable, its controlling
// terminal hung up, its new parent when its parent leaves) is caught by the
// first ticks of a new process, by the re-read of the children of a process
// that left, and by the sweep: each kept process has a slot among
// `kSweepTicks`, and on the ticks of its slot what others can change is read
// and compared with the last full read.
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

enum class ProcessRead {
    carry, // the last record, with this tick's resident size
    sweep, // what others can change, then carry or read in full
    full,
};

// `full` for a clock that cannot be read or has moved and for a young
// process, `sweep` on its sweep slot, `carry` otherwise.
ProcessRead processRead(const ProcessReadFacts &facts);

// Nanoseconds that any thread of `pid` has run, from the process CPU-time
// clock; nothing when the pid holds no process now or its clock may not be
// read. The clock belongs to whichever process holds the pid at the call.
std::optional<std::uint64_t> processCPUClockNanoseconds(pid_t pid);
