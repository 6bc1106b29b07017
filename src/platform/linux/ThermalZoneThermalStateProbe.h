#pragma once

#include "probes/ThermalTrips.h"
#include "sampling/Probing.h"

#include <QString>

#include <vector>

// Reads every <sysRoot>/class/thermal/thermal_zone*/ afresh: its "temp" and
// its trip_point_<n>_type / trip_point_<n>_temp pairs. A zone or trip whose
// files cannot be read or parsed is passed over.
std::vector<ThermalZoneTrips> readThermalZoneTrips(const QString &sysRoot);

// The thermal state from the kernel's trip points (see thermalStateFromTrips).
class ThermalZoneThermalStateProbe final : public ThermalStateProbing {
public:
    explicit ThermalZoneThermalStateProbe(QString sysRoot = QStringLiteral("/sys"));
    SystemThermalState read() override;

private:
    QString m_sysRoot;
};
