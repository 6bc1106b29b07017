#pragma once

#include "sampling/SystemMetricSample.h"

#include <QString>

#include <cstdint>

// Every figure with a unit that the interface shows is formatted here, so a
// page, the menu bar and the report can never spell a unit differently.

enum class DisplayUnit {
    percent,            // "42%"
    celsius,            // "61.3°C"
    degrees,            // "58°", where the place leaves no room for the C
    rpm,                // "2,150 RPM"
    lowerRpm,           // "2,150 rpm", the overview's fan card
    megabytesPerSecond, // "12.3 MB/s"
};

// The figure in the interface's locale with its grouping and the unit's
// usual fraction digits (none for percents, degrees and RPM, one for °C and
// MB/s), or exactly `fractionDigits` of them.
QString unitText(double value, DisplayUnit unit);
QString unitText(double value, DisplayUnit unit, int fractionDigits);
// "°C", " RPM", ...: the unit as the figures carry it.
QString unitSuffix(DisplayUnit unit);
// A reading's figure as `unitText`, or its status word when it has none.
QString readingText(const SensorReading<double> &reading, DisplayUnit unit);

// Rounded to the nearest integer, halves away from zero. A value that is not
// finite reads as 0 and one beyond ±10^15 is held there, so a broken reading
// can never make the rounding undefined.
long long roundedWholeNumber(double value);
// The rounded value in plain digits without grouping: "42", "-5".
QString wholeNumberText(double value);
// The same with the unit: "1234%", "80°".
QString wholeUnitText(double value, DisplayUnit unit);
// A share of a whole, as on every page: "42%".
inline QString wholePercentText(double value)
{
    return wholeUnitText(value, DisplayUnit::percent);
}

// Byte counts and rates in decimal units and without a locale: the decimal
// mark is always a point. The unit follows the input, not the rounded value,
// so 999999 bytes read "1000 KB".

// "1.5 GB", "2 MB", "1 KB", "999 B".
QString memoryText(std::uint64_t bytes);

// "1.5 GB/s", "1.5 MB/s", "1 KB/s", "1000 B/s" (below 1000 rounded half away
// from zero). A negative or non-finite rate reads "0 B/s".
QString rateText(double bytesPerSecond);

// A rate reading as `rateText`, or its status word when it has none.
QString rateReadingText(const SensorReading<double> &bytesPerSecond);
// "10.4 GB / 16.0 GB", or the reading's status word when it has none.
QString memoryReadingText(const SensorReading<SystemMemoryUsage> &memory);
