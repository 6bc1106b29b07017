#include "platform/linux/ProcPidStat.h"

#include <charconv>
#include <cmath>

#include <sys/stat.h>
#include <unistd.h>

std::optional<ProcPidStat> parseProcPidStat(std::string_view text)
{
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return std::nullopt;

    ProcPidStat stat;
    const std::string_view comm = text.substr(open + 1, close - open - 1);
    stat.name = QString::fromUtf8(comm.data(), static_cast<qsizetype>(comm.size()));

    // Fields from 3 (state) on, separated by single blanks.
    std::string_view rest = text.substr(close + 1);
    unsigned long long fields[23] = {};
    int field = 2;
    std::size_t position = 0;
    while (field < 22) {
        if (position >= rest.size() || rest[position] != ' ')
            return std::nullopt;
        ++position;
        ++field;
        std::size_t end = rest.find_first_of(" \n", position);
        if (end == std::string_view::npos)
            end = rest.size();
        const std::string_view token = rest.substr(position, end - position);
        if (token.empty())
            return std::nullopt;
        if (field != 3) { // field 3 is the state letter
            long long value = 0;
            const auto result = std::from_chars(token.data(), token.data() + token.size(), value);
            if (result.ec != std::errc() || result.ptr != token.data() + token.size())
                return std::nullopt;
            fields[field] = static_cast<unsigned long long>(value);
            if (value < 0 && (field == 14 || field == 15 || field == 22))
                return std::nullopt;
        }
        position = end;
    }
    stat.parentPID = static_cast<pid_t>(static_cast<long long>(fields[4]));
    stat.processGroupID = static_cast<pid_t>(static_cast<long long>(fields[5]));
    stat.sessionID = static_cast<pid_t>(static_cast<long long>(fields[6]));
    stat.terminal = static_cast<int>(static_cast<long long>(fields[7]));
    stat.userTicks = fields[14];
    stat.systemTicks = fields[15];
    stat.startTicks = fields[22];
    return stat;
}

TimePoint processStartTime(long long bootTimeSeconds, unsigned long long startTicks,
                           long clockTicksPerSecond)
{
    const double ticksPerSecond = clockTicksPerSecond > 0 ? double(clockTicksPerSecond) : 100.0;
    return TimePoint::fromSecondsSince1970(static_cast<double>(bootTimeSeconds) +
                                           static_cast<double>(startTicks) / ticksPerSecond);
}

std::optional<unsigned long long> cpuTicksToNanoseconds(unsigned long long userTicks,
                                                        unsigned long long systemTicks,
                                                        long clockTicksPerSecond)
{
    if (clockTicksPerSecond <= 0)
        return std::nullopt;
    unsigned long long total = 0;
    if (__builtin_add_overflow(userTicks, systemTicks, &total))
        return std::nullopt;
    // Divide first, as total × 10⁹ would overflow long before total does.
    const auto rate = static_cast<unsigned long long>(clockTicksPerSecond);
    const unsigned long long seconds = total / rate;
    const unsigned long long remainder = total % rate;
    unsigned long long wholeNanoseconds = 0;
    if (__builtin_mul_overflow(seconds, 1000000000ULL, &wholeNanoseconds))
        return std::nullopt;
    const unsigned long long partNanoseconds = remainder * 1000000000ULL / rate;
    unsigned long long result = 0;
    if (__builtin_add_overflow(wholeNanoseconds, partNanoseconds, &result))
        return std::nullopt;
    return result;
}

std::optional<uid_t> procPidOwner(const QByteArray &pidDirectory)
{
    struct stat info {};
    if (::stat(pidDirectory.constData(), &info) != 0)
        return std::nullopt;
    return info.st_uid;
}

long systemClockTicksPerSecond()
{
    static const long ticks = [] {
        const long value = ::sysconf(_SC_CLK_TCK);
        return value > 0 ? value : 100L;
    }();
    return ticks;
}
