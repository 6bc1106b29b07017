#include "platform/linux/HwmonSensorProbe.h"

#include "support/SysfsTesting.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ostream>
#include <string>

namespace {

using R = SensorReading<double>;

struct MachineCase {
    const char *label; // the test's name
    const char *machine;
    std::vector<QByteArray> refusedEndings;
    int error;
    R temperature;
    R fan;
};

void PrintTo(const MachineCase &c, std::ostream *out)
{
    *out << c.label;
}

class HwmonSensorProbeOnMachines : public testing::TestWithParam<MachineCase> {};

TEST_P(HwmonSensorProbeOnMachines, ReadsTheFoldedTemperatureAndFan)
{
    const MachineCase &c = GetParam();
    HwmonSensorProbe probe(fixtureSys(c.machine), failingReader(c.refusedEndings, c.error));
    const AppleSensorReadings readings = probe.read();
    EXPECT_EQ(readings.temperature, c.temperature);
    EXPECT_EQ(readings.fan, c.fan);
    // Nothing is kept: a second tick reads the same files again to the same end.
    EXPECT_EQ(probe.read(), readings);
}

R temperature(double celsius)
{
    return R::available(celsius, QStringLiteral("Linux hwmon CPU sensors"));
}
R fan(double rpm)
{
    return R::available(rpm, QStringLiteral("Linux hwmon fan sensors"));
}
const R noTemperatureInterface =
    R::unsupported(QStringLiteral("当前系统没有可用的 hwmon 温度传感器接口"));
const R noDieChannel = R::unsupported(QStringLiteral("未发现可识别的 CPU 温度通道"));
const R noFanSensor = R::unsupported(QStringLiteral("系统没有可读取的风扇转速传感器"));
const R noFanSpeed = R::unsupported(QStringLiteral("hwmon 未返回明确的风扇 RPM"));
const R temperatureRefused = R::permissionDenied(QStringLiteral("无权读取 hwmon 温度传感器"));
const R fanRefused = R::permissionDenied(QStringLiteral("无权读取 hwmon 风扇传感器"));

const std::vector<QByteArray> kIntelDieInputs = {"hwmon10/temp1_input", "hwmon10/temp2_input",
                                                 "hwmon10/temp3_input", "hwmon10/temp4_input",
                                                 "hwmon10/temp5_input", "thermal_zone1/temp"};

using M = MachineCase;
// clang-format off
INSTANTIATE_TEST_SUITE_P(Fixtures, HwmonSensorProbeOnMachines, testing::Values(
    // coretemp package 52 and cores 50/49/53/48, x86_pkg_temp zone 52: the
    // median of 48 49 50 52 52 53. acpitz, nvme and thinkpad temp1 are not
    // the die. The ThinkPad fan turns at 2400.
    M{"IntelLaptop", "intel-laptop", {}, 0, temperature(51.0), fan(2400.0)},
    // k10temp Tctl 61.25 and Tccd1 58.5; nct6798 CPUTIN and amdgpu edge are
    // not the die. Fans 0 (nct), 1150 (nct), 0 (amdgpu): the turning one.
    M{"AmdDesktop", "amd-desktop", {}, 0, temperature(59.875), fan(1150.0)},
    M{"ServerVm", "server-vm", {}, 0, noTemperatureInterface, noFanSensor},
    // Only the one good coretemp channel survives empty, junk, negative and
    // absurd files; no fan file holds a speed (65535 is the "no fan" value of
    // some Super I/O chips).
    M{"BrokenSensors", "broken-sensors", {}, 0, temperature(51.5), noFanSpeed},
    // Every input and zone temperature refused.
    M{"EverythingRefused", "intel-laptop", {"_input", "/temp"}, EACCES, temperatureRefused,
      fanRefused},
    // Every die channel refused (acpitz, nvme and the ThinkPad are never
    // opened): the refusal is what hides the die, so it is what is reported.
    M{"DieChannelsRefused", "intel-laptop", kIntelDieInputs, EACCES, temperatureRefused,
      fan(2400.0)},
    // One die channel refused, the others junk: not every one tried was
    // refused, so nothing recognisable is what is reported.
    M{"GoodChannelRefusedBesideJunk", "broken-sensors", {"hwmon0/temp5_input"}, EACCES,
      noDieChannel, noFanSpeed},
    M{"SomeCoresRefused", "intel-laptop", {"hwmon10/temp1_input", "hwmon10/temp2_input"}, EACCES,
      temperature(50.5), fan(2400.0)},
    // Files that vanish between listing and reading are no refusal.
    M{"InputsVanished", "intel-laptop", {"_input", "/temp"}, ENOENT, noDieChannel, noFanSpeed},
    // The names and labels vanish: channels fall back to "<hwmonN> temp<n>"
    // and the zone's directory name, none of which names the die.
    M{"NamesVanished", "intel-laptop", {"/name", "_label", "/type"}, ENOENT, noDieChannel,
      fan(2400.0)}),
    [](const testing::TestParamInfo<M> &info) { return std::string(info.param.label); });
// clang-format on

// Only die channels are opened: the nvme, acpitz and ThinkPad inputs (a
// disk's sensor can wake the disk) never are, whatever they would read.
TEST(ScanHwmonSensors, OpensOnlyTheDieChannelsInNumericOrder)
{
    auto opened = std::make_shared<std::vector<QByteArray>>();
    const QByteArray sys = fixtureSys("intel-laptop").toLocal8Bit();
    const HwmonSensorScan scan =
        scanHwmonSensors(sys, recordingReader(opened), kLinuxCPUDieChannelNames);
    QStringList names;
    for (const TemperatureChannel &channel : scan.temperatures.channels)
        names << channel.name;
    // hwmon10 after hwmon3, crit and label files are not inputs.
    EXPECT_EQ(names, (QStringList{"coretemp Package id 0", "coretemp Core 0", "coretemp Core 1",
                                  "coretemp Core 2", "coretemp Core 3", "x86_pkg_temp"}));
    EXPECT_EQ(scan.temperatures.channels[1].reading, (SensorChannelValue{50.0, false}));
    // Each as "<device>/<file>".
    std::vector<QByteArray> temperatureInputs;
    for (const QByteArray &path : *opened) {
        if (path.contains("/temp") && (path.endsWith("_input") || path.endsWith("/temp")))
            temperatureInputs.push_back(
                path.mid(path.lastIndexOf('/', path.lastIndexOf('/') - 1) + 1));
    }
    EXPECT_EQ(temperatureInputs, kIntelDieInputs);
}

TEST(ScanHwmonSensors, KeepsBrokenFilesAsChannelsWithoutValues)
{
    const HwmonSensorScan scan = scanHwmonSensors(fixtureSys("broken-sensors").toLocal8Bit(),
                                                  systemFileReader(), kLinuxCPUDieChannelNames);
    ASSERT_EQ(scan.temperatures.channels.size(), 5u);
    const std::vector<std::optional<double>> expected = {std::nullopt, std::nullopt, -5.0,
                                                         999999.999, 51.5};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(scan.temperatures.channels[i].reading.value, expected[i]) << i;
    // The device with a name and no inputs adds nothing.
    ASSERT_EQ(scan.fans.size(), 4u);
    EXPECT_EQ(scan.fans[2].value, -1.0);
}

TEST(SensorFileValue, ParsesScaledIntegersAndMarksRefusals)
{
    const std::pair<FileReadResult, SensorChannelValue> cases[] = {
        {{QByteArray("52000\n"), 0}, {52.0, false}},
        {{QByteArray("-7500"), 0}, {-7.5, false}},
        {{QByteArray(""), 0}, {}},
        {{QByteArray("52.0\n"), 0}, {}},
        {{QByteArray("99999999999999999999999"), 0}, {}},
        {{std::nullopt, EACCES}, {std::nullopt, true}},
        {{std::nullopt, EPERM}, {std::nullopt, true}},
        {{std::nullopt, ENOENT}, {}},
        {{std::nullopt, ENXIO}, {}}, // a sensor whose chip does not answer
    };
    for (const auto &[file, expected] : cases)
        EXPECT_EQ(sensorFileValue(file, 1000.0), expected)
            << (file.bytes ? file.bytes->constData() : "error");
}

} // namespace
