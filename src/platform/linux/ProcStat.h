#pragma once

#include "probes/CPUUsageTracker.h"

#include <optional>
#include <string_view>

// Parsers for /proc/stat. The first "cpu" line holds the whole machine's
// cumulative ticks (user nice system idle iowait irq softirq steal guest
// guest_nice); guest time is already inside user, so it is not added again.
//   user = user, nice = nice, system = system + irq + softirq + steal,
//   idle = idle + iowait.
// Lines from older kernels with only the first four fields are accepted.
std::optional<CPUTickSnapshot> parseProcStatCPUTicks(std::string_view procStat);

// The "btime" line: boot time in seconds since 1970.
std::optional<long long> parseProcStatBootTime(std::string_view procStat);
