#include "probes/MemoryUsage.h"

#include <algorithm>

SystemMemoryUsage memoryUsageFromFree(std::uint64_t totalBytes, std::uint64_t freeBytes)
{
    return SystemMemoryUsage{totalBytes - std::min(freeBytes, totalBytes), totalBytes};
}
