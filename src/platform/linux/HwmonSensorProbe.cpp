#include "platform/linux/HwmonSensorProbe.h"

#include <algorithm>

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(HwmonSensorProbe)
};

// hwmon names of graphics cards. Their fan cools the card and stops when the
// card idles; it is not the machine's fan.
constexpr std::string_view kGraphicsCardHwmonNames[] = {"amdgpu", "radeon", "nouveau"};

bool isGraphicsCard(const QString &hwmonName)
{
    return std::any_of(std::begin(kGraphicsCardHwmonNames), std::end(kGraphicsCardHwmonNames),
                       [&](std::string_view name) {
                           return hwmonName == QLatin1String(name.data(), qsizetype(name.size()));
                       });
}

// One hwmon device with its name and the numbered files of its sensors.
struct HwmonDevice {
    QByteArray directory; // "hwmonN"
    QByteArray path;      // where the temp*/fan* files are; ends with '/'
    QString name;
    std::vector<QByteArray> entries;
};

QString trimmedText(const FileReadResult &file)
{
    return file.bytes ? QString::fromUtf8(file.bytes->trimmed()) : QString();
}

bool holdsSensorFiles(const std::vector<QByteArray> &entries)
{
    return std::any_of(entries.begin(), entries.end(), [](const QByteArray &entry) {
        return entry.startsWith("temp") || entry.startsWith("fan");
    });
}

// The awake devices of <sysRoot>/class/hwmon; absent when that class does not
// exist. Of a sleeping device only its runtime status is read.
std::optional<std::vector<HwmonDevice>> hwmonDevices(const QByteArray &sysRoot,
                                                     const KernelFileReader &read)
{
    const QByteArray classPath = sysRoot + "/class/hwmon/";
    const auto names = listDirectory(classPath);
    if (!names)
        return std::nullopt;
    std::vector<HwmonDevice> devices;
    for (const NumberedEntry &entry : numberedEntries(*names, "hwmon")) {
        const QByteArray path = classPath + entry.name + '/';
        if (deviceAsleep(path + "device/", read))
            continue;
        auto entries = listDirectory(path);
        if (!entries)
            continue; // gone since the listing
        HwmonDevice device{entry.name, path, {}, std::move(*entries)};
        device.name = trimmedText(read(path + "name"));
        // Older drivers (applesmc, some Super I/O chips) register their files,
        // and often their name, on the parent device.
        if (!holdsSensorFiles(device.entries)) {
            if (auto parentEntries = listDirectory(path + "device/")) {
                device.path = path + "device/";
                device.entries = std::move(*parentEntries);
                if (device.name.isEmpty())
                    device.name = trimmedText(read(device.path + "name"));
            }
        }
        if (device.name.isEmpty())
            device.name = QString::fromUtf8(entry.name); // a device without a readable name
        devices.push_back(std::move(device));
    }
    return devices;
}

// The numbers n of "<prefix><n>_input" among the entries, ascending.
std::vector<unsigned long long> inputNumbers(const std::vector<QByteArray> &entries,
                                             std::string_view prefix)
{
    std::vector<unsigned long long> numbers;
    for (const QByteArray &entry : entries) {
        if (const auto number = numberBetween(asView(entry), prefix, "_input"))
            numbers.push_back(*number);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

} // namespace

SensorChannelValue sensorFileValue(const FileReadResult &file, double scale)
{
    if (!file.bytes)
        return {std::nullopt, file.permissionDenied()};
    const std::optional<long long> raw = parseDecimal(asView(*file.bytes));
    if (!raw)
        return {};
    return {static_cast<double>(*raw) / scale, false};
}

HwmonSensorScan scanHwmonSensors(const QByteArray &sysRoot, const KernelFileReader &read,
                                 std::span<const std::string_view> cpuDieNames)
{
    HwmonSensorScan scan;
    // Millidegrees Celsius in both hwmon and thermal zones (sysfs-class-hwmon).
    constexpr double millidegrees = 1000.0;
    const auto devices = hwmonDevices(sysRoot, read);
    scan.temperatures.interfacePresent = devices.has_value();
    for (const HwmonDevice &device : devices.value_or(std::vector<HwmonDevice>{})) {
        for (const unsigned long long number : inputNumbers(device.entries, "temp")) {
            const QByteArray stem = "temp" + QByteArray::number(number);
            QString label = trimmedText(read(device.path + stem + "_label"));
            if (label.isEmpty())
                label = QString::fromLatin1(stem);
            QString name = device.name + QLatin1Char(' ') + label;
            if (!channelNameMatches(name, cpuDieNames))
                continue; // never opened: see the header
            scan.temperatures.channels.push_back(
                {std::move(name),
                 sensorFileValue(read(device.path + stem + "_input"), millidegrees),
                 QString::fromUtf8(device.directory)});
        }
        if (isGraphicsCard(device.name))
            continue;
        for (const unsigned long long number : inputNumbers(device.entries, "fan")) {
            const QByteArray path = device.path + "fan" + QByteArray::number(number) + "_input";
            scan.fans.push_back(sensorFileValue(read(path), 1.0));
        }
    }
    const QByteArray thermalPath = sysRoot + "/class/thermal/";
    if (const auto names = listDirectory(thermalPath)) {
        for (const NumberedEntry &zone : numberedEntries(*names, "thermal_zone")) {
            const QByteArray zonePath = thermalPath + zone.name + '/';
            scan.temperatures.interfacePresent = true;
            QString type = trimmedText(read(zonePath + "type"));
            if (type.isEmpty())
                type = QString::fromUtf8(zone.name);
            if (!channelNameMatches(type, cpuDieNames))
                continue;
            scan.temperatures.channels.push_back(
                {type, sensorFileValue(read(zonePath + "temp"), millidegrees),
                 QString::fromUtf8(zone.name)});
        }
    }
    return scan;
}

HwmonSensorProbe::HwmonSensorProbe(QString sysRoot, KernelFileReader reader)
    : m_sysRoot(sysRoot.toLocal8Bit()),
      m_read(std::move(reader)), m_temperatureTexts{Words::tr("Linux hwmon CPU 传感器"),
                                                    Words::tr(
                                                        "当前系统没有可用的 hwmon 温度传感器接口"),
                                                    Words::tr("无权读取 hwmon 温度传感器"),
                                                    Words::tr("未发现可识别的 CPU 温度通道")},
      m_fanTexts{Words::tr("Linux hwmon 风扇传感器"), Words::tr("系统没有可读取的风扇转速传感器"),
                 Words::tr("无权读取 hwmon 风扇传感器"), Words::tr("hwmon 未返回明确的风扇 RPM")}
{
}

AppleSensorReadings HwmonSensorProbe::read()
{
    // One walk serves both halves; the temperature is decided first.
    const HwmonSensorScan scan = scanHwmonSensors(m_sysRoot, m_read, kLinuxCPUDieChannelNames);
    AppleSensorReadings readings;
    readings.temperature =
        temperatureReading(scan.temperatures, kLinuxCPUChannelNames, m_temperatureTexts);
    readings.fan = fanReading(scan.fans, m_fanTexts);
    return readings;
}
