#pragma once

#include "platform/linux/SysfsDirectory.h"
#include "probes/ChipSensors.h"
#include "sampling/Probing.h"

#include <QString>

#include <vector>

// What one walk of <sysRoot> found.
struct HwmonSensorScan {
    // Each CPU die channel: hwmon temp<n>_input, named "<hwmon name> <label>"
    // (label from temp<n>_label, else "temp<n>"), then thermal zone temps,
    // named by their type; millidegrees become degrees. The name comes from
    // files that cost nothing (name, labels, zone types); an input whose name
    // is not a die's is never opened, because reading some sensors wakes
    // their device: a disk's drivetemp read every 2 s keeps the disk from
    // spinning down, an NVMe sensor keeps the drive out of its sleep states.
    TemperatureSurvey temperatures;
    // Each hwmon fan<n>_input (RPM), but a graphics card's (amdgpu, radeon,
    // nouveau): that fan cools the card and stands still while it idles.
    std::vector<SensorChannelValue> fans;
};

// hwmon devices and their inputs go in the order of their numbers (hwmon2
// before hwmon10), so the fold sees the same order on every tick. A hwmon
// device whose parent sleeps (device/power/runtime_status "suspended") is
// passed over whole: reading its sensors would wake it. One without temp*
// and fan* files is read through its device/, where older drivers (applesmc,
// some Super I/O chips) put them.
HwmonSensorScan scanHwmonSensors(const QByteArray &sysRoot, const KernelFileReader &read,
                                 std::span<const std::string_view> cpuDieNames);

// One value of a sysfs sensor file: a decimal integer divided by `scale`.
// Empty text, junk and failed reads give no value; a refused read is marked.
SensorChannelValue sensorFileValue(const FileReadResult &file, double scale);

// Chip temperature and fan speed from hwmon and the thermal zones, read afresh
// on every call: sensors come and go with drivers and suspend, and a walk of a
// few dozen small files costs less than keeping it right.
class HwmonSensorProbe final : public AppleSensorProbing {
public:
    explicit HwmonSensorProbe(QString sysRoot = QStringLiteral("/sys"),
                              KernelFileReader reader = systemFileReader());
    AppleSensorReadings read() override;

private:
    QByteArray m_sysRoot;
    KernelFileReader m_read;
    TemperatureTexts m_temperatureTexts;
    FanTexts m_fanTexts;
};
