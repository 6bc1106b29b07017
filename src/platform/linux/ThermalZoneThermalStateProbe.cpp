#include "platform/linux/ThermalZoneThermalStateProbe.h"

std::vector<ThermalZoneTrips> readThermalZoneTrips(const QByteArray &sysRoot,
                                                   const KernelFileReader &read)
{
    std::vector<ThermalZoneTrips> zones;
    const QByteArray thermalPath = sysRoot + "/class/thermal/";
    const auto names = listDirectory(thermalPath);
    if (!names)
        return zones;
    for (const NumberedEntry &entry : numberedEntries(*names, "thermal_zone")) {
        const QByteArray zonePath = thermalPath + entry.name + '/';
        ThermalZoneTrips zone;
        // Trip points are numbered from 0 without gaps.
        for (int index = 0;; ++index) {
            const QByteArray stem = zonePath + "trip_point_" + QByteArray::number(index) + '_';
            const FileReadResult type = read(stem + "type");
            if (!type.bytes)
                break;
            const FileReadResult tripTemp = read(stem + "temp");
            const std::optional<long long> value =
                tripTemp.bytes ? parseDecimal(asView(*tripTemp.bytes)) : std::nullopt;
            if (!value || *value <= 0)
                continue;
            zone.trips.push_back({QString::fromLatin1(type.bytes->trimmed()), *value});
        }
        if (zone.trips.empty())
            continue;
        if (const FileReadResult temp = read(zonePath + "temp"); temp.bytes)
            zone.temperature = parseDecimal(asView(*temp.bytes));
        zones.push_back(std::move(zone));
    }
    return zones;
}

ThermalZoneThermalStateProbe::ThermalZoneThermalStateProbe(QString sysRoot, KernelFileReader reader)
    : m_sysRoot(sysRoot.toLocal8Bit()), m_read(std::move(reader))
{
}

SystemThermalState ThermalZoneThermalStateProbe::read()
{
    return thermalStateFromTrips(readThermalZoneTrips(m_sysRoot, m_read));
}
