#include "platform/linux/ThermalZoneThermalStateProbe.h"
#include "support/Fixtures.h"

#include <gtest/gtest.h>

namespace {

TEST(ThermalZoneFixtures, TripPointsGiveTheState)
{
    const std::pair<const char *, SystemThermalState> machines[] = {
        {"no-zones", SystemThermalState::unknown},
        {"does-not-exist", SystemThermalState::unknown},
        {"no-trip-points", SystemThermalState::unknown},
        {"below-trips", SystemThermalState::nominal},
        {"active", SystemThermalState::fair},
        {"passive", SystemThermalState::serious},
        {"hot", SystemThermalState::critical},
        {"critical", SystemThermalState::critical},
        {"highest-zone-wins", SystemThermalState::serious},
        {"unreadable-temp", SystemThermalState::nominal},
    };
    for (const auto &[machine, expected] : machines) {
        ThermalZoneThermalStateProbe probe(fixturePath(QStringLiteral("thermal-zones/") + machine));
        EXPECT_EQ(probe.read(), expected) << machine;
    }
}

TEST(ThermalTrips, EdgesOfTheTripRule)
{
    using Trip = ThermalZoneTrips::Trip;
    EXPECT_EQ(thermalStateFromTrips({}), SystemThermalState::unknown);
    EXPECT_EQ(thermalStateFromTrips({{70000, {Trip{"active", 70000}}}}), SystemThermalState::fair);
    EXPECT_EQ(thermalStateFromTrips({{69999, {Trip{"active", 70000}}}}),
              SystemThermalState::nominal);
    // Trip kinds the kernel may add later are not thermal pressure.
    EXPECT_EQ(thermalStateFromTrips({{99000, {Trip{"mystery", 1000}}}}),
              SystemThermalState::unknown);
    EXPECT_EQ(thermalStateFromTrips({{std::nullopt, {Trip{"critical", 1000}}}}),
              SystemThermalState::nominal);
}

} // namespace
