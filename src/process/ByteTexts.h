#pragma once

#include <QString>

#include <cstdint>

// Byte counts and rates for display, in decimal units and without a locale:
// the decimal mark is always a point. The unit follows the input, not the
// rounded value, so 999999 bytes read "1000 KB".

// "1.5 GB", "2 MB", "1 KB", "999 B".
QString memoryText(std::uint64_t bytes);

// "1.5 GB/s", "1.5 MB/s", "1 KB/s", "1000 B/s" (below 1000 rounded half away
// from zero). A negative or non-finite rate reads "0 B/s".
QString rateText(double bytesPerSecond);
