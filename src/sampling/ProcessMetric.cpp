#include "sampling/ProcessMetric.h"

#include <QHashFunctions>

#include <charconv>
#include <string_view>

std::size_t ProcessIdentityHash::operator()(const ProcessIdentity &identity) const noexcept
{
    std::size_t seed = std::hash<pid_t>{}(identity.pid);
    seed ^= std::hash<double>{}(identity.startTime.secondsSince1970) + 0x9e3779b97f4a7c15ULL +
            (seed << 6) + (seed >> 2);
    seed ^= qHash(identity.executablePath) + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2);
    return seed;
}

QString formatStartTimeKey(TimePoint startTime)
{
    char buffer[64];
    // Fixed notation, shortest digits that read back as the same double.
    const auto result = std::to_chars(buffer, buffer + sizeof buffer,
                                      startTime.secondsSince1970, std::chars_format::fixed);
    std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));
    QString key = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    const bool plainNumber =
        text.find_first_of(".eEn") == std::string_view::npos; // no point, exponent, nan or inf
    if (plainNumber)
        key += QStringLiteral(".0");
    return key;
}

QString processNodeKey(pid_t pid, TimePoint startTime)
{
    return QString::number(pid) + QLatin1Char('-') + formatStartTimeKey(startTime);
}
