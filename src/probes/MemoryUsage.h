#pragma once

#include "sampling/SystemMetricSample.h"

#include <cstdint>

// Used memory is everything that is not free: total minus the free bytes,
// with the free bytes capped at total so that used never wraps below zero.
SystemMemoryUsage memoryUsageFromFree(std::uint64_t totalBytes, std::uint64_t freeBytes);
