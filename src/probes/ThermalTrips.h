#pragma once

#include "sampling/SystemThermalState.h"

#include <QString>

#include <optional>
#include <vector>

// One thermal zone as the kernel describes it: the current temperature and
// its trip points, in the zone's own unit (Linux: millidegrees Celsius).
struct ThermalZoneTrips {
    struct Trip {
        QString type; // "critical", "hot", "passive", "active", or another kernel word
        long long temperature = 0;

        bool operator==(const Trip &) const = default;
    };
    std::optional<long long> temperature;
    std::vector<Trip> trips;

    bool operator==(const ThermalZoneTrips &) const = default;
};

// Where no single thermal-pressure value exists, the zones' own trip points
// stand in for it: at or above a critical or hot trip is `critical`, a passive
// trip (the kernel throttles) `serious`, an active trip (cooling engaged)
// `fair`, else `nominal`. The highest state of all zones wins; no zone with a
// trip point at all gives `unknown`.
SystemThermalState thermalStateFromTrips(const std::vector<ThermalZoneTrips> &zones);
