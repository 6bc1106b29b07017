#include "process/LoadTextFormats.h"

#include "sampling/Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(LoadTextFormats)
};

long long wholeSeconds(double seconds)
{
    // Ten million years is far beyond any process and keeps llround defined.
    constexpr double longest = 3.2e14;
    const double clamped = std::isfinite(seconds) ? std::clamp(seconds, 0.0, longest) : 0.0;
    return std::llround(clamped);
}

} // namespace

long long durationTextKey(double seconds)
{
    const long long whole = wholeSeconds(seconds);
    return whole < 60 ? whole : whole / 60 * 60;
}

QString durationText(double seconds)
{
    return durationText(seconds, interfaceLocale());
}

QString durationText(double seconds, const QLocale &locale)
{
    const long long whole = wholeSeconds(seconds);
    if (whole >= 3600)
        return Words::tr("%1 小时 %2 分钟")
            .arg(formatLocaleInteger(whole / 3600, locale),
                 formatLocaleInteger(whole % 3600 / 60, locale));
    if (whole >= 60)
        return Words::tr("%1 分钟").arg(formatLocaleInteger(whole / 60, locale));
    return Words::tr("%1 秒").arg(formatLocaleInteger(whole, locale));
}

ResourceImpact resourceImpact(double cpuPercent, double diskBytesPerSecond)
{
    if (cpuPercent >= 80.0 || diskBytesPerSecond >= 20'000'000.0)
        return ResourceImpact::high;
    if (cpuPercent >= 20.0 || diskBytesPerSecond >= 2'000'000.0)
        return ResourceImpact::medium;
    return ResourceImpact::low;
}
