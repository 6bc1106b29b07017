#include "probes/SensorFolds.h"
#include "probes/ChipSensors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

struct FoldCase {
    const char *name;
    std::vector<double> values;
    std::optional<double> expected;
};

TEST(FoldTemperature, KeepsFiniteValuesWithinTenToOneHundredTwentyFiveInclusive)
{
    const FoldCase cases[] = {
        {"median of three, unsorted", {90.0, 40.0, 50.0}, 50.0},
        {"median of four, unsorted", {60.0, 90.0, 40.0, 50.0}, 55.0},
        {"repeats", {60.0, 60.0, 40.0, 60.0}, 60.0},
        {"9.9 is too cold", {9.9}, std::nullopt},
        {"10.0 counts", {10.0}, 10.0},
        {"125.0 counts", {125.0}, 125.0},
        {"125.1 is too hot", {125.1}, std::nullopt},
        {"out-of-range values do not shift the median", {9.9, 40.0, 125.1, 60.0}, 50.0},
        {"not a number and infinity are dropped", {nan, inf, -inf, 42.0}, 42.0},
        {"empty", {}, std::nullopt},
    };
    for (const FoldCase &c : cases)
        EXPECT_EQ(foldTemperature(c.values), c.expected) << c.name;
}

TEST(FoldFanSpeed, MediansTurningFansAndReportsAllStoppedAsZero)
{
    const FoldCase cases[] = {
        {"a stopped fan does not halve the figure", {0.0, 2400.0}, 2400.0},
        {"all stopped is a reading", {0.0, 0.0}, 0.0},
        {"median of turning fans", {1800.0, 2000.0, 2600.0}, 2000.0},
        {"empty", {}, std::nullopt},
        {"only an implausible speed", {25000.0}, std::nullopt},
        {"the bound itself counts", {20000.0}, 20000.0},
        {"negative, not-a-number and infinity are dropped", {-1.0, nan, inf, 1150.0}, 1150.0},
        {"a stopped fan next to garbage is still zero", {0.0, 65535.0}, 0.0},
    };
    for (const FoldCase &c : cases)
        EXPECT_EQ(foldFanSpeed(c.values), c.expected) << c.name;
}

TEST(ChannelNameFilter, MatchesLowerCasedSubstrings)
{
    const std::pair<const char *, bool> rows[] = {
        {"coretemp Core 3", true}, {"SOME PACKAGE ID 1", true}, {"CPU-therm", true},
        {"GPU-therm", false},      {"bigcore0-thermal", false}, {"", false},
    };
    for (const auto &[name, expected] : rows)
        EXPECT_EQ(channelNameMatches(QString::fromUtf8(name), kLinuxCPUDieChannelNames), expected)
            << name;
}

const TemperatureTexts temperatureTexts{"source", "no interface", "refused", "no channel"};
const FanTexts fanTexts{"fan source", "no fans", "fans refused", "no valid speed"};

SensorChannelValue value(double v)
{
    return {v, false};
}
const SensorChannelValue refused{std::nullopt, true};
const SensorChannelValue unreadable{std::nullopt, false};

TEST(TemperatureReading, DecidesOverTheDieChannelsInTheOrderInterfacePackageMedianRefusalNothing)
{
    struct Case {
        const char *name;
        TemperatureSurvey survey;
        SensorReading<double> expected;
    };
    using R = SensorReading<double>;
    const char *core0 = "coretemp Core 0", *core1 = "coretemp Core 1", *tctl = "k10temp Tctl",
               *acpi = "acpitz", *package0 = "coretemp Package id 0",
               *package1 = "coretemp Package id 1", *tdie = "k10temp Tdie", *tccd = "k10temp Tccd1";
    const R none = R::unsupported("no channel"), denied = R::permissionDenied("refused");
    const R read55 = R::available(55.0, "source"), read48 = R::available(48.0, "source");
    // clang-format off
    const Case cases[] = {
        {"no interface", {false, {}}, R::unsupported("no interface")},
        {"interface with no channels", {true, {}}, none},
        {"die channels folded", {true, {{core0, value(50)}, {core1, value(60)}, {acpi, value(99)}}},
         read55},
        {"only non-die channels", {true, {{"acpitz", value(45)}}}, none},
        {"die out of range", {true, {{tctl, value(130)}}}, none},
        {"every die channel refused", {true, {{core0, refused}, {tctl, refused}}}, denied},
        {"only non-die refused", {true, {{"hwmon0 temp1", refused}, {"acpitz", refused}}}, none},
        {"one die refused, one unreadable", {true, {{core0, refused}, {core1, unreadable}}}, none},
        {"the die refused, a non-die read", {true, {{core0, refused}, {acpi, value(45)}}}, denied},
        {"non-die refused beside a read", {true, {{"nvme", refused}, {acpi, value(45)}}}, none},
        {"a refusal hides no figure", {true, {{core0, refused}, {core1, value(48)}}}, read48},
        {"vanished or junk files are no refusal", {true, {{core0, unreadable}}}, none},
        {"the package, not the median",
         {true, {{core0, value(40)}, {package0, value(55)}, {core1, value(42)}}}, read55},
        {"the hottest package",
         {true, {{package0, value(48)}, {core0, value(60)}, {package1, value(44)}}}, read48},
        {"a package without a plausible value leaves the cores",
         {true, {{package0, value(130)}, {core0, value(50)}, {core1, value(60)}}}, read55},
        {"Tctl is the package of a chip without Tdie",
         {true, {{tctl, value(55), "hwmon1"}, {tccd, value(40), "hwmon1"}}}, read55},
        {"Tdie over the offset Tctl of its chip",
         {true, {{tctl, value(68), "hwmon1"}, {tdie, value(48), "hwmon1"}}}, read48},
        {"another chip's Tdie does not demote this chip's Tctl",
         {true, {{tctl, value(68), "hwmon1"}, {tdie, value(48), "hwmon1"},
                 {tctl, value(55), "hwmon2"}}}, read55},
    };
    // clang-format on
    for (const Case &c : cases)
        EXPECT_EQ(temperatureReading(c.survey, kLinuxCPUChannelNames, temperatureTexts), c.expected)
            << c.name;
}

TEST(FanReading, DecidesInTheOrderNoFansRefusalFold)
{
    struct Case {
        const char *name;
        std::vector<SensorChannelValue> fans;
        SensorReading<double> expected;
    };
    using R = SensorReading<double>;
    const Case cases[] = {
        {"no fans", {}, R::unsupported("no fans")},
        {"all refused", {refused, refused}, R::permissionDenied("fans refused")},
        {"one refused, one read", {refused, value(1500)}, R::available(1500.0, "fan source")},
        {"stopped and turning", {value(0), value(1150)}, R::available(1150.0, "fan source")},
        {"all stopped", {value(0), value(0)}, R::available(0.0, "fan source")},
        {"only garbage", {value(25000), unreadable}, R::unsupported("no valid speed")},
        {"refused beside garbage that was read",
         {refused, value(-1)},
         R::unsupported("no valid speed")},
    };
    for (const Case &c : cases)
        EXPECT_EQ(fanReading(c.fans, fanTexts), c.expected) << c.name;
}

} // namespace
