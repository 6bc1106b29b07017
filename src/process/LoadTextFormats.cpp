#include "process/LoadTextFormats.h"

#include "sampling/Text.h"

#include <algorithm>
#include <cmath>

QString memoryText(std::uint64_t bytes)
{
    const double value = static_cast<double>(bytes);
    if (bytes >= 1'000'000'000)
        return QString::asprintf("%.1f GB", value / 1e9);
    if (bytes >= 1'000'000)
        return QString::asprintf("%.0f MB", value / 1e6);
    if (bytes >= 1'000)
        return QString::asprintf("%.0f KB", value / 1e3);
    return QString::number(bytes) + QStringLiteral(" B");
}

QString rateText(double bytesPerSecond)
{
    const double rate = std::isfinite(bytesPerSecond) && bytesPerSecond > 0 ? bytesPerSecond : 0.0;
    if (rate >= 1e9)
        return QString::asprintf("%.1f GB/s", rate / 1e9);
    if (rate >= 1e6)
        return QString::asprintf("%.1f MB/s", rate / 1e6);
    if (rate >= 1e3)
        return QString::asprintf("%.0f KB/s", rate / 1e3);
    return QString::number(std::llround(rate)) + QStringLiteral(" B/s");
}

QString durationText(double seconds)
{
    // Ten million years is far beyond any process and keeps llround defined.
    constexpr double longest = 3.2e14;
    const double clamped = std::isfinite(seconds) ? std::clamp(seconds, 0.0, longest) : 0.0;
    const long long whole = std::llround(clamped);
    if (whole >= 3600)
        return kwText("%1 小时 %2 分钟")
            .arg(formatLocaleInteger(whole / 3600), formatLocaleInteger(whole % 3600 / 60));
    if (whole >= 60)
        return kwText("%1 分钟").arg(formatLocaleInteger(whole / 60));
    return kwText("%1 秒").arg(formatLocaleInteger(whole));
}

ResourceImpact resourceImpact(double cpuPercent, double diskBytesPerSecond)
{
    if (cpuPercent >= 80.0 || diskBytesPerSecond >= 20'000'000.0)
        return ResourceImpact::high;
    if (cpuPercent >= 20.0 || diskBytesPerSecond >= 2'000'000.0)
        return ResourceImpact::medium;
    return ResourceImpact::low;
}
