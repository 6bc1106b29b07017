#include "platform/linux/ThermalZoneThermalStateProbe.h"
#include "support/Fixtures.h"

#include <gtest/gtest.h>

namespace {

struct ZoneCase {
    const char *machine;
    SystemThermalState expected;
};

class ThermalZoneFixtures : public ::testing::TestWithParam<ZoneCase> {};

TEST_P(ThermalZoneFixtures, TripPointsGiveTheState)
{
    const ZoneCase row = GetParam();
    ThermalZoneThermalStateProbe probe(fixturePath(QStringLiteral("thermal-zones/") + row.machine));
    EXPECT_EQ(probe.read(), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Machines, ThermalZoneFixtures,
    ::testing::Values(ZoneCase{"no-zones", SystemThermalState::unknown},
                      ZoneCase{"does-not-exist", SystemThermalState::unknown},
                      ZoneCase{"no-trip-points", SystemThermalState::unknown},
                      ZoneCase{"below-trips", SystemThermalState::nominal},
                      ZoneCase{"active", SystemThermalState::fair},
                      ZoneCase{"passive", SystemThermalState::serious},
                      ZoneCase{"hot", SystemThermalState::critical},
                      ZoneCase{"critical", SystemThermalState::critical},
                      ZoneCase{"highest-zone-wins", SystemThermalState::serious},
                      ZoneCase{"unreadable-temp", SystemThermalState::nominal},
                      ZoneCase{"intel-laptop", SystemThermalState::nominal}));

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
