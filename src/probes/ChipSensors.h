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
// the lower-cased channel name.
inline constexpr std::string_view kAppleCPUDieChannelNames[] = {"tdie", "tcpu", "tdev"};
// Linux names channels "<hwmon name> <label>" or by thermal zone type; these
// cover the Intel, AMD and ARM drivers' names for the die and the package.
inline constexpr std::string_view kLinuxCPUDieChannelNames[] = {
    "coretemp",    "k10temp",      "zenpower", "cpu_thermal", "cpu-thermal",
    "soc_thermal", "x86_pkg_temp", "tdie",     "tctl",        "package id"};

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
// 2. the die channels fold (foldTemperature) to a value: available;
// 3. there are die channels and every one of them was refused:
//    permissionDenied;
// 4. otherwise: unsupported, no recognisable channel.
SensorReading<double> temperatureReading(const TemperatureSurvey &survey,
                                         std::span<const std::string_view> cpuDieNames,
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
