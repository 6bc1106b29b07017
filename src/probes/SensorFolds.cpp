#include "probes/SensorFolds.h"

#include <algorithm>
#include <cmath>

std::optional<double> medianValue(std::vector<double> values)
{
    if (values.empty())
        return std::nullopt;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    if (values.size() % 2 == 1)
        return values[middle];
    return (values[middle - 1] + values[middle]) * 0.5;
}

namespace {

std::vector<double> plausibleTemperatures(const std::vector<double> &celsius)
{
    std::vector<double> plausible;
    plausible.reserve(celsius.size());
    for (const double value : celsius) {
        if (std::isfinite(value) && value >= kLowestPlausibleCelsius &&
            value <= kHighestPlausibleCelsius)
            plausible.push_back(value);
    }
    return plausible;
}

} // namespace

std::optional<double> foldTemperature(const std::vector<double> &celsius)
{
    return medianValue(plausibleTemperatures(celsius));
}

std::optional<double> foldPackageTemperature(const std::vector<double> &celsius)
{
    const std::vector<double> plausible = plausibleTemperatures(celsius);
    if (plausible.empty())
        return std::nullopt;
    return *std::max_element(plausible.begin(), plausible.end());
}

std::optional<double> foldFanSpeed(const std::vector<double> &rpm)
{
    bool anyValid = false;
    std::vector<double> turning;
    for (const double value : rpm) {
        if (!std::isfinite(value) || value < 0.0 || value > kHighestPlausibleFanRPM)
            continue;
        anyValid = true;
        if (value > 0.0)
            turning.push_back(value);
    }
    if (!turning.empty())
        return medianValue(std::move(turning));
    if (anyValid)
        return 0.0; // every fan stands still, which is a reading of its own
    return std::nullopt;
}
