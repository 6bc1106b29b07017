#pragma once

#include <QString>

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

// The label shown to the user ("正常", ...).
QString systemThermalStateLabel(SystemThermalState state);
