#pragma once

#include "sampling/Probing.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string_view>

struct MeminfoFigures {
    std::uint64_t totalBytes = 0;
    std::uint64_t availableBytes = 0;

    bool operator==(const MeminfoFigures &) const = default;
};

// MemTotal and MemAvailable of /proc/meminfo (given in kB, i.e. KiB); nothing
// when either is missing or malformed.
std::optional<MeminfoFigures> parseMeminfo(std::string_view meminfo);

// Used memory as `free` and htop call it: MemTotal − MemAvailable.
class ProcMeminfoMemoryProbe final : public MemoryUsageProbing {
public:
    explicit ProcMeminfoMemoryProbe(QString procRoot = QStringLiteral("/proc"));
    SensorReading<SystemMemoryUsage> sample() override;

private:
    QByteArray m_meminfoPath;
};
