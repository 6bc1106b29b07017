#pragma once

#include "dashboard/DashboardModel.h"

#include <QString>

#include <cstdint>

// The display texts of sizes, rates and running times, shared by the task
// assembly, the classification and the pages. Decimal units throughout; the
// unit is chosen by the input, not by the rounded value ("1000 KB").

// "1.5 GB", "2 MB", "1 KB", "999 B". No locale: the decimal mark is a point.
QString memoryText(std::uint64_t bytes);

// "1.5 GB/s", "1.5 MB/s", "3 KB/s", "1000 B/s". No locale. A negative or
// non-finite rate reads as 0.
QString rateText(double bytesPerSecond);

// "1 小时 5 分钟", "3 分钟", "59 秒", rounded to whole seconds, halves away from
// zero; negative and non-finite values read as 0. Numbers in the user's locale.
QString durationText(double seconds);

// How hard a process or a source works the machine: high at 80 % CPU or
// 20 MB/s of disk, medium at 20 % or 2 MB/s, low below both.
ResourceImpact resourceImpact(double cpuPercent, double diskBytesPerSecond);
