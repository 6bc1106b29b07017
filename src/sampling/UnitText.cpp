#include "sampling/UnitText.h"

#include "sampling/EnumTable.h"
#include "sampling/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

struct UnitRow {
    DisplayUnit key;
    const char *suffix;
    int fractionDigits;
};

constexpr UnitRow kUnitRows[] = {
    {DisplayUnit::percent, "%", 0},     {DisplayUnit::celsius, "°C", 1},
    {DisplayUnit::degrees, "°", 0},     {DisplayUnit::rpm, " RPM", 0},
    {DisplayUnit::lowerRpm, " rpm", 0}, {DisplayUnit::megabytesPerSecond, " MB/s", 1},
};

static_assert(coversEnumeration(kUnitRows, DisplayUnit::megabytesPerSecond));

const UnitRow &rowOf(DisplayUnit unit)
{
    return enumRow(kUnitRows, unit);
}

// printf's "%.*f": the exact binary value rounded to `decimals` places, ties
// to even (1.25 gives "1.2"), with a point as the decimal mark in every
// locale. QString::number rounds ties away from zero instead, and snprintf
// follows LC_NUMERIC, which the application sets from the environment.
QString fixed(double value, int decimals)
{
    char buffer[400]; // DBL_MAX has 309 digits before the point
    const std::to_chars_result result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    if (result.ec != std::errc())
        return QStringLiteral("0");
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

} // namespace

QString unitSuffix(DisplayUnit unit)
{
    return QString::fromUtf8(rowOf(unit).suffix);
}

QString unitText(double value, DisplayUnit unit)
{
    return unitText(value, unit, rowOf(unit).fractionDigits);
}

QString unitText(double value, DisplayUnit unit, int fractionDigits)
{
    return formatLocaleNumber(value, fractionDigits) + unitSuffix(unit);
}

QString readingText(const SensorReading<double> &reading, DisplayUnit unit)
{
    return reading.isAvailable() ? unitText(*reading.value(), unit) : reading.statusText();
}

long long roundedWholeNumber(double value)
{
    if (!std::isfinite(value))
        return 0;
    return std::llround(std::clamp(value, -1e15, 1e15));
}

QString wholeNumberText(double value)
{
    return QString::number(roundedWholeNumber(value));
}

QString wholeUnitText(double value, DisplayUnit unit)
{
    return wholeNumberText(value) + unitSuffix(unit);
}

QString memoryText(std::uint64_t bytes)
{
    if (bytes >= 1'000'000'000)
        return fixed(double(bytes) / 1e9, 1) + QStringLiteral(" GB");
    if (bytes >= 1'000'000)
        return fixed(double(bytes) / 1e6, 0) + QStringLiteral(" MB");
    if (bytes >= 1'000)
        return fixed(double(bytes) / 1e3, 0) + QStringLiteral(" KB");
    return QString::number(bytes) + QStringLiteral(" B");
}

QString rateText(double bytesPerSecondReported)
{
    // A rate is never negative; a broken one reads as none rather than "nan".
    const double bytesPerSecond =
        std::isfinite(bytesPerSecondReported) && bytesPerSecondReported > 0 ? bytesPerSecondReported
                                                                            : 0.0;
    if (bytesPerSecond >= 1e9)
        return fixed(bytesPerSecond / 1e9, 1) + QStringLiteral(" GB/s");
    if (bytesPerSecond >= 1e6)
        return fixed(bytesPerSecond / 1e6, 1) + QStringLiteral(" MB/s");
    if (bytesPerSecond >= 1e3)
        return fixed(bytesPerSecond / 1e3, 0) + QStringLiteral(" KB/s");
    return fixed(std::round(bytesPerSecond), 0) + QStringLiteral(" B/s");
}

QString rateReadingText(const SensorReading<double> &bytesPerSecond)
{
    return bytesPerSecond.isAvailable() ? rateText(*bytesPerSecond.value())
                                        : bytesPerSecond.statusText();
}

QString memoryReadingText(const SensorReading<SystemMemoryUsage> &memory)
{
    if (!memory.isAvailable())
        return memory.statusText();
    return memoryText(memory.value()->usedBytes) + QStringLiteral(" / ") +
           memoryText(memory.value()->totalBytes);
}
