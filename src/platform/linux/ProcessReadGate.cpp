#include "platform/linux/ProcessReadGate.h"

#include <ctime>

ProcessRead processRead(const ProcessReadFacts &facts)
{
    if (!facts.clock || !facts.lastClock || *facts.clock != *facts.lastClock)
        return ProcessRead::full;
    if (facts.ticksSinceFirstRead <= kYoungTicks)
        return ProcessRead::full;
    return facts.tick % kSweepTicks == facts.sweepSlot % kSweepTicks ? ProcessRead::sweep
                                                                     : ProcessRead::carry;
}

std::optional<std::uint64_t> processCPUClockNanoseconds(pid_t pid)
{
    if (pid <= 0)
        return std::nullopt;
    // The process clock's id as the kernel encodes it (the pid inverted,
    // shifted past the clock type, with the scheduler clock's type 2).
    // glibc's clock_getcpuclockid builds the same id but first asks
    // clock_getres whether the pid exists: one more system call for every
    // process every tick, where clock_gettime already fails for a pid that
    // holds no process.
    const auto clock = static_cast<clockid_t>((~static_cast<clockid_t>(pid) << 3) | 2);
    timespec time{};
    if (::clock_gettime(clock, &time) != 0 || time.tv_sec < 0)
        return std::nullopt;
    return std::uint64_t(time.tv_sec) * 1'000'000'000u + std::uint64_t(time.tv_nsec);
}
