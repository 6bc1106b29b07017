#pragma once

#include <QString>

#include <cstdint>
#include <optional>

// The operating system's thermal pressure, in its fixed case order. Not a
// reading: every sample carries one, and what cannot be classified is `unknown`.
enum class SystemThermalState {
    nominal,
    fair,
    serious,
    critical,
    unknown,
};

// The raw text form, which is also the case name ("nominal", ...).
QString systemThermalStateRawText(SystemThermalState state);

// Exact match of the five raw texts; anything else gives nothing.
std::optional<SystemThermalState> systemThermalStateFromRawText(const QString &text);

// The system's raw value: 0..3 map to the first four cases, anything else is `unknown`.
SystemThermalState systemThermalStateFromSystemValue(std::uint64_t value);

// The label shown to the user ("正常", ...).
QString systemThermalStateLabel(SystemThermalState state);
