#include "probes/ThermalTrips.h"

namespace {

// Severity order for combining zones; `unknown` never comes out of a zone.
int severity(SystemThermalState state)
{
    switch (state) {
    case SystemThermalState::nominal: return 0;
    case SystemThermalState::fair: return 1;
    case SystemThermalState::serious: return 2;
    case SystemThermalState::critical: return 3;
    case SystemThermalState::unknown: return -1;
    }
    return -1;
}

std::optional<SystemThermalState> stateForTrip(const QString &type)
{
    if (type == QLatin1String("critical") || type == QLatin1String("hot"))
        return SystemThermalState::critical;
    if (type == QLatin1String("passive"))
        return SystemThermalState::serious;
    if (type == QLatin1String("active"))
        return SystemThermalState::fair;
    return std::nullopt;
}

} // namespace

SystemThermalState thermalStateFromTrips(const std::vector<ThermalZoneTrips> &zones)
{
    bool anyTrip = false;
    SystemThermalState worst = SystemThermalState::nominal;
    for (const auto &zone : zones) {
        for (const auto &trip : zone.trips) {
            const std::optional<SystemThermalState> state = stateForTrip(trip.type);
            if (!state)
                continue;
            anyTrip = true;
            // A zone whose temperature cannot be read has reached none of its trips.
            if (zone.temperature && *zone.temperature >= trip.temperature &&
                severity(*state) > severity(worst))
                worst = *state;
        }
    }
    return anyTrip ? worst : SystemThermalState::unknown;
}
