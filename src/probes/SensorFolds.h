#pragma once

#include <optional>
#include <vector>

// The folds that turn many sensor channels into the one figure a sample
// carries. Shared by every platform's sensor route.

// Bounds of a believable chip temperature, both inclusive, in degrees Celsius.
inline constexpr double kLowestPlausibleCelsius = 10.0;
inline constexpr double kHighestPlausibleCelsius = 125.0;
// Above this no fan of a desktop or laptop turns; a larger value is a misread.
inline constexpr double kHighestPlausibleFanRPM = 20000.0;

// The middle value (the mean of the two middle values for an even count);
// nothing for an empty list.
std::optional<double> medianValue(std::vector<double> values);

// Median of the finite values within the plausible temperature range.
std::optional<double> foldTemperature(const std::vector<double> &celsius);

// The largest of the finite values within the plausible temperature range:
// of several packages (sockets), the hottest is the machine's.
std::optional<double> foldPackageTemperature(const std::vector<double> &celsius);

// Median of the turning fans; 0 when every valid fan stands still (a real
// reading); nothing when no fan gave a finite speed within 0..20000.
std::optional<double> foldFanSpeed(const std::vector<double> &rpm);
