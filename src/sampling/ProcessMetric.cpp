#include "sampling/ProcessMetric.h"

#include <charconv>
#include <string_view>

namespace {

// The start time key written at `into`: the end of what was written.
char *writeStartTimeKey(char *into, char *end, TimePoint startTime)
{
    // Fixed notation, shortest digits that read back as the same double.
    const auto result =
        std::to_chars(into, end, startTime.secondsSince1970, std::chars_format::fixed);
    const std::string_view text(into, static_cast<std::size_t>(result.ptr - into));
    char *written = result.ptr;
    const bool plainNumber =
        text.find_first_of(".eEn") == std::string_view::npos; // no point, exponent, nan or inf
    if (plainNumber && end - written >= 2) {
        *written++ = '.';
        *written++ = '0';
    }
    return written;
}

} // namespace

QString processNodeKey(pid_t pid, TimePoint startTime)
{
    // One buffer and one string: ingest makes a key for every process twice a tick.
    char buffer[420];
    char *end = buffer + sizeof buffer;
    char *written = std::to_chars(buffer, end, pid).ptr;
    *written++ = '-';
    written = writeStartTimeKey(written, end, startTime);
    return QString::fromLatin1(buffer, static_cast<qsizetype>(written - buffer));
}
