#pragma once

#include "sampling/SensorReading.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <span>
#include <string_view>
#include <vector>

// The temperature and fan decisions of every platform: the platform lists
// its named channels and fan readings, this decides which reading the sample
// carries and with which words.

// Substrings that mark a channel as measuring the CPU die, matched against
// the lower-cased channel name. Linux names channels "<hwmon name> <label>"
// or by thermal zone type; these cover the Intel, AMD and ARM drivers' names
// for the die and the package ("cpu-therm" is a Jetson's zone, "soc-thermal"
// a Rockchip board's).
inline constexpr std::string_view kLinuxCPUDieChannelNames[] = {
    "coretemp",    "k10temp",      "zenpower", "cpu_thermal", "cpu-therm", "soc_thermal",
    "soc-thermal", "x86_pkg_temp", "tdie",     "tctl",        "package id"};

// A channel that carries a whole CPU package's temperature: its lower-cased
// name contains `name`, unless `unlessChipHas` is set and another channel of
// the same chip contains that.
struct PackageChannelName {
    std::string_view name;
    std::string_view unlessChipHas = {};

    bool operator==(const PackageChannelName &) const = default;
};
// A PC publishes one package reading per socket beside its cores, and that is
// what its owner calls the CPU temperature. k10temp's Tctl is the control
// value, which first-generation Ryzen offsets by 10 to 20 degrees; such chips
// publish the true Tdie beside it.
inline constexpr PackageChannelName kLinuxPackageChannelNames[] = {{"coretemp package id"},
                                                                   {"x86_pkg_temp"},
                                                                   {"zenpower tdie"},
                                                                   {"k10temp tdie"},
                                                                   {"k10temp tctl", "tdie"}};

// What a platform calls its CPU channels.
struct CPUChannelNames {
    std::span<const std::string_view> die;
    std::span<const PackageChannelName> package; // empty: the platform has none
};
inline constexpr CPUChannelNames kLinuxCPUChannelNames{kLinuxCPUDieChannelNames,
                                                       kLinuxPackageChannelNames};

// True when the lower-cased name contains any of the substrings.
bool channelNameMatches(QStringView name, std::span<const std::string_view> substrings);

// How one attempt to read a channel or a fan went.
struct SensorChannelValue {
    std::optional<double> value; // absent: nothing usable was read
    bool refused = false;        // the system denied the read (no permission)

    bool operator==(const SensorChannelValue &) const = default;
};

struct TemperatureChannel {
    QString name;
    SensorChannelValue reading; // degrees Celsius
    QString chip;               // the device that publishes it; shared by the channels of one chip

    bool operator==(const TemperatureChannel &) const = default;
};

// Everything one tick found about temperatures.
struct TemperatureSurvey {
    bool interfacePresent = false;            // the platform's sensor interface exists at all
    std::vector<TemperatureChannel> channels; // the channels that were tried

    bool operator==(const TemperatureSurvey &) const = default;
};

// The platform's words for the temperature outcomes.
struct TemperatureTexts {
    QString source;
    QString noInterface;      // unsupported
    QString permissionDenied; // permissionDenied
    QString noChannel;        // unsupported
};

// The decision, in this order, over the CPU die channels of the survey
// (other channels take no part):
// 1. no interface: unsupported;
// 2. package channels give a plausible value: the largest of them
//    (foldPackageTemperature, one package per socket), available;
// 3. the die channels fold (foldTemperature) to a value: available. A
//    package channel that gave nothing plausible leaves the cores to speak;
// 4. there are die channels and every one of them was refused:
//    permissionDenied;
// 5. otherwise: unsupported, no recognisable channel.
SensorReading<double> temperatureReading(const TemperatureSurvey &survey,
                                         const CPUChannelNames &names,
                                         const TemperatureTexts &texts);

struct FanTexts {
    QString source;
    QString noFans;           // unsupported
    QString permissionDenied; // permissionDenied
    QString noValidSpeed;     // unsupported
};

// Fans in the platform's order (RPM). No fans: unsupported; fans that were
// all refused (none gave a value): permissionDenied; foldFanSpeed of the
// values read, or unsupported when it gives nothing.
SensorReading<double> fanReading(const std::vector<SensorChannelValue> &fans,
                                 const FanTexts &texts);
