#pragma once

#include "process/DashboardTask.h"
#include "sampling/UnitText.h"

#include <QLocale>
#include <QString>

#include <cstdint>

// The display texts of a load source beside the byte texts (UnitText.h):
// running times and the impact on the machine.

// "1 小时 5 分钟", "3 分钟", "59 秒", rounded to whole seconds, halves away from
// zero; negative and non-finite values read as 0. Numbers in the user's locale.
QString durationText(double seconds);
QString durationText(double seconds, const QLocale &locale);
// What `durationText` depends on: equal keys give equal texts (from one
// minute on, every second of a minute gives the same text).
long long durationTextKey(double seconds);

// How hard a process or a source works the machine: high at 80 % CPU or
// 20 MB/s of disk, medium at 20 % or 2 MB/s, low below both.
ResourceImpact resourceImpact(double cpuPercent, double diskBytesPerSecond);
