#pragma once

#include "sampling/SystemMetricSample.h"

#include <optional>

// When the machine counts as running hot. The incident log and the menu bar
// both decide with this one test, so that an incident opens on exactly the
// ticks on which the menu bar turns to high load or worse.

// Both inclusive.
inline constexpr double kHotTemperatureCelsius = 75.0;
inline constexpr double kHotCPUPercent = 30.0;

// Hot when the system reports any thermal pressure (`fair`, `serious`,
// `critical`), or when the temperature is readable and at least 75 °C while
// the CPU, the larger of the system's and the top task's (`taskCPU`), is at
// least 30 %. A temperature that can't be read never makes a sample hot: heat
// counts only together with real load, while the system's own pressure counts
// alone.
bool isSampleHot(const SystemMetricSample &sample, std::optional<double> taskCPU);
