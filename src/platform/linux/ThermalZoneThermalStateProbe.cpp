#include "platform/linux/ThermalZoneThermalStateProbe.h"

#include "platform/linux/FileReading.h"

#include <QDir>

std::vector<ThermalZoneTrips> readThermalZoneTrips(const QString &sysRoot)
{
    std::vector<ThermalZoneTrips> zones;
    const QDir thermal(sysRoot + QStringLiteral("/class/thermal"));
    const QStringList names = thermal.entryList({QStringLiteral("thermal_zone*")},
                                                QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : names) {
        const QString zonePath = thermal.filePath(name) + QLatin1Char('/');
        ThermalZoneTrips zone;
        const FileReadResult temp = readKernelFile(zonePath + QStringLiteral("temp"));
        if (temp.bytes)
            zone.temperature = parseDecimal(asView(*temp.bytes));
        // Trip points are numbered from 0 without gaps.
        for (int index = 0;; ++index) {
            const QString stem = zonePath + QStringLiteral("trip_point_%1_").arg(index);
            const FileReadResult type = readKernelFile(stem + QStringLiteral("type"));
            if (!type.bytes)
                break;
            const FileReadResult tripTemp = readKernelFile(stem + QStringLiteral("temp"));
            const std::optional<long long> value =
                tripTemp.bytes ? parseDecimal(asView(*tripTemp.bytes)) : std::nullopt;
            // A trip at or below 0 is a disabled one on many drivers.
            if (!value || *value <= 0)
                continue;
            zone.trips.push_back(
                {QString::fromLatin1(type.bytes->trimmed()), *value});
        }
        zones.push_back(std::move(zone));
    }
    return zones;
}

ThermalZoneThermalStateProbe::ThermalZoneThermalStateProbe(QString sysRoot)
    : m_sysRoot(std::move(sysRoot))
{
}

SystemThermalState ThermalZoneThermalStateProbe::read()
{
    return thermalStateFromTrips(readThermalZoneTrips(m_sysRoot));
}
