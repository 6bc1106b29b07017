#include "platform/linux/ProcStat.h"

#include "platform/linux/FileReading.h"

#include <charconv>
#include <vector>

namespace {

std::string_view lineStartingWith(std::string_view text, std::string_view prefix)
{
    TextLines lines(text);
    while (const std::optional<std::string_view> line = lines.next()) {
        if (line->starts_with(prefix))
            return *line;
    }
    return {};
}

std::vector<unsigned long long> numbersAfterLabel(std::string_view line)
{
    std::vector<unsigned long long> numbers;
    std::size_t position = line.find(' ');
    while (position != std::string_view::npos && position < line.size()) {
        while (position < line.size() && line[position] == ' ')
            ++position;
        if (position >= line.size())
            break;
        unsigned long long value = 0;
        const auto result =
            std::from_chars(line.data() + position, line.data() + line.size(), value);
        if (result.ec != std::errc())
            return {}; // junk in the line: no trustworthy figure
        numbers.push_back(value);
        position = static_cast<std::size_t>(result.ptr - line.data());
        if (position < line.size() && line[position] != ' ')
            return {};
    }
    return numbers;
}

} // namespace

std::optional<CPUTickSnapshot> parseProcStatCPUTicks(std::string_view procStat)
{
    const std::string_view line = lineStartingWith(procStat, "cpu ");
    if (line.empty())
        return std::nullopt;
    const std::vector<unsigned long long> n = numbersAfterLabel(line);
    if (n.size() < 4)
        return std::nullopt;
    auto field = [&](std::size_t index) -> double {
        return index < n.size() ? static_cast<double>(n[index]) : 0.0;
    };
    CPUTickSnapshot ticks;
    ticks.user = field(0);
    ticks.nice = field(1);
    ticks.system = field(2) + field(5) + field(6) + field(7);
    ticks.idle = field(3) + field(4);
    return ticks;
}

std::optional<long long> parseProcStatBootTime(std::string_view procStat)
{
    const std::string_view line = lineStartingWith(procStat, "btime ");
    if (line.empty())
        return std::nullopt;
    const std::vector<unsigned long long> n = numbersAfterLabel(line);
    if (n.size() != 1)
        return std::nullopt;
    return static_cast<long long>(n[0]);
}
