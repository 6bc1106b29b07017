#include "platform/linux/ProcMeminfoMemoryProbe.h"

#include "platform/linux/FileReading.h"
#include "probes/MemoryUsage.h"

#include <limits>

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProcMeminfoMemoryProbe)
};

std::optional<std::uint64_t> kibibyteField(std::string_view meminfo, std::string_view label)
{
    TextLines lines(meminfo);
    while (std::optional<std::string_view> next = lines.next()) {
        std::string_view line = *next;
        if (line.size() <= label.size() || line.substr(0, label.size()) != label ||
            line[label.size()] != ':')
            continue;
        line.remove_prefix(label.size() + 1);
        if (line.size() >= 3 && line.substr(line.size() - 3) == " kB")
            line.remove_suffix(3);
        const std::optional<unsigned long long> kib = parseUnsignedDecimal(line);
        if (!kib || *kib > std::numeric_limits<std::uint64_t>::max() / 1024)
            return std::nullopt;
        return static_cast<std::uint64_t>(*kib) * 1024;
    }
    return std::nullopt;
}

} // namespace

std::optional<MeminfoFigures> parseMeminfo(std::string_view meminfo)
{
    const auto total = kibibyteField(meminfo, "MemTotal");
    const auto available = kibibyteField(meminfo, "MemAvailable");
    if (!total || !available)
        return std::nullopt;
    return MeminfoFigures{*total, *available};
}

ProcMeminfoMemoryProbe::ProcMeminfoMemoryProbe(QString procRoot)
    : m_meminfoPath((procRoot + QStringLiteral("/meminfo")).toLocal8Bit())
{
}

SensorReading<SystemMemoryUsage> ProcMeminfoMemoryProbe::sample()
{
    const FileReadResult file = readKernelFile(m_meminfoPath);
    const std::optional<MeminfoFigures> figures =
        file.bytes ? parseMeminfo(asView(*file.bytes)) : std::nullopt;
    if (!figures)
        return SensorReading<SystemMemoryUsage>::temporarilyUnavailable(
            Words::tr("无法读取 /proc/meminfo"));
    return SensorReading<SystemMemoryUsage>::available(
        memoryUsageFromFree(figures->totalBytes, figures->availableBytes),
        QStringLiteral("Linux /proc/meminfo"));
}
