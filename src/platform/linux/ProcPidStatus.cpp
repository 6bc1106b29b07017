#include "platform/linux/ProcPidStatus.h"

#include "platform/linux/FileReading.h"

#include <limits>

std::optional<pid_t> parseProcPidStatusThreadGroup(std::string_view text)
{
    constexpr std::string_view key = "Tgid:";
    TextLines lines(text);
    while (const std::optional<std::string_view> line = lines.next()) {
        if (!line->starts_with(key))
            continue;
        const std::optional<long long> number = parseDecimal(line->substr(key.size()));
        if (!number || *number <= 0 || *number > std::numeric_limits<pid_t>::max())
            return std::nullopt;
        return static_cast<pid_t>(*number);
    }
    return std::nullopt;
}
