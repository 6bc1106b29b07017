#include "platform/linux/ProcPidStatus.h"

#include "platform/linux/FileReading.h"

#include <limits>

std::optional<pid_t> parseProcPidStatusThreadGroup(std::string_view text)
{
    constexpr std::string_view key = "Tgid:";
    std::size_t position = 0;
    while (position < text.size()) {
        std::size_t end = text.find('\n', position);
        if (end == std::string_view::npos)
            end = text.size();
        const std::string_view line = text.substr(position, end - position);
        position = end + 1;
        if (line.substr(0, key.size()) != key)
            continue;
        const std::optional<long long> number = parseDecimal(line.substr(key.size()));
        if (!number || *number <= 0 || *number > std::numeric_limits<pid_t>::max())
            return std::nullopt;
        return static_cast<pid_t>(*number);
    }
    return std::nullopt;
}
