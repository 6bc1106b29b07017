#include "probes/ChipSensors.h"

#include "probes/SensorFolds.h"

#include <algorithm>

bool channelNameMatches(QStringView name, std::span<const std::string_view> substrings)
{
    const QString lowered = name.toString().toLower();
    for (const std::string_view substring : substrings) {
        const QLatin1String needle(substring.data(), static_cast<qsizetype>(substring.size()));
        if (lowered.contains(needle))
            return true;
    }
    return false;
}

namespace {

bool isPackageChannel(const TemperatureChannel &channel, const TemperatureSurvey &survey,
                      std::span<const PackageChannelName> packageNames)
{
    for (const PackageChannelName &package : packageNames) {
        const std::string_view name[] = {package.name};
        if (!channelNameMatches(channel.name, name))
            continue;
        if (package.unlessChipHas.empty())
            return true;
        const std::string_view sibling[] = {package.unlessChipHas};
        const bool chipHasIt = std::any_of(
            survey.channels.begin(), survey.channels.end(), [&](const TemperatureChannel &other) {
                return &other != &channel && other.chip == channel.chip &&
                       channelNameMatches(other.name, sibling);
            });
        if (!chipHasIt)
            return true;
    }
    return false;
}

} // namespace

SensorReading<double> temperatureReading(const TemperatureSurvey &survey,
                                         const CPUChannelNames &names,
                                         const TemperatureTexts &texts)
{
    if (!survey.interfacePresent)
        return SensorReading<double>::unsupported(texts.noInterface);
    std::vector<double> dieValues;
    std::vector<double> packageValues;
    std::size_t dieChannels = 0;
    std::size_t dieChannelsRefused = 0;
    for (const TemperatureChannel &channel : survey.channels) {
        if (!channelNameMatches(channel.name, names.die))
            continue;
        ++dieChannels;
        if (channel.reading.value) {
            dieValues.push_back(*channel.reading.value);
            if (isPackageChannel(channel, survey, names.package))
                packageValues.push_back(*channel.reading.value);
        }
        if (channel.reading.refused)
            ++dieChannelsRefused;
    }
    if (const std::optional<double> package = foldPackageTemperature(packageValues))
        return SensorReading<double>::available(*package, texts.source);
    if (const std::optional<double> folded = foldTemperature(dieValues))
        return SensorReading<double>::available(*folded, texts.source);
    if (dieChannels > 0 && dieChannelsRefused == dieChannels)
        return SensorReading<double>::permissionDenied(texts.permissionDenied);
    return SensorReading<double>::unsupported(texts.noChannel);
}

SensorReading<double> fanReading(const std::vector<SensorChannelValue> &fans, const FanTexts &texts)
{
    if (fans.empty())
        return SensorReading<double>::unsupported(texts.noFans);
    std::vector<double> values;
    bool anyRefused = false;
    for (const SensorChannelValue &fan : fans) {
        if (fan.value)
            values.push_back(*fan.value);
        anyRefused = anyRefused || fan.refused;
    }
    if (values.empty() && anyRefused)
        return SensorReading<double>::permissionDenied(texts.permissionDenied);
    if (const std::optional<double> folded = foldFanSpeed(values))
        return SensorReading<double>::available(*folded, texts.source);
    return SensorReading<double>::unsupported(texts.noValidSpeed);
}
