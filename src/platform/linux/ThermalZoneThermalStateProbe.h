#pragma once

#include "platform/linux/SysfsDirectory.h"
#include "probes/ThermalTrips.h"
#include "sampling/Probing.h"

#include <QString>

#include <vector>

// Reads every <sysRoot>/class/thermal/thermal_zone<n>/ afresh: its
// trip_point_<n>_type / trip_point_<n>_temp pairs and, for a zone with a trip
// point, its "temp". A zone without one has no say in the state, so its
// temperature is not read. A trip whose files cannot be read or parsed is
// passed over, and so is a trip at or below 0, which many drivers publish as
// a placeholder (x86_pkg_temp's passive trips of 0).
std::vector<ThermalZoneTrips> readThermalZoneTrips(const QByteArray &sysRoot,
                                                   const KernelFileReader &read);

// The thermal state from the kernel's trip points (see thermalStateFromTrips).
class ThermalZoneThermalStateProbe final : public ThermalStateProbing {
public:
    explicit ThermalZoneThermalStateProbe(QString sysRoot = QStringLiteral("/sys"),
                                          KernelFileReader reader = systemFileReader());
    SystemThermalState read() override;

private:
    QByteArray m_sysRoot;
    KernelFileReader m_read;
};
