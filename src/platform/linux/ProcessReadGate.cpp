#include "platform/linux/ProcessReadGate.h"

#include <ctime>

bool needsFullRead(const ProcessReadFacts &facts)
{
    if (!facts.clock || !facts.lastClock || *facts.clock != *facts.lastClock)
        return true;
    if (facts.ticksSinceFirstRead <= kYoungTicks)
        return true;
    return facts.tick % kSweepTicks == facts.sweepSlot % kSweepTicks;
}

std::optional<std::uint64_t> processCPUClockNanoseconds(pid_t pid)
{
    clockid_t clock{};
    if (::clock_getcpuclockid(pid, &clock) != 0)
        return std::nullopt;
    timespec time{};
    if (::clock_gettime(clock, &time) != 0 || time.tv_sec < 0)
        return std::nullopt;
    return std::uint64_t(time.tv_sec) * 1'000'000'000u + std::uint64_t(time.tv_nsec);
}
