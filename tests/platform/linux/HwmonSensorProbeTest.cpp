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
    return R::available(celsius, QStringLiteral("Linux hwmon CPU 传感器"));
}
R fan(double rpm)
{
    return R::available(rpm, QStringLiteral("Linux hwmon 风扇传感器"));
}
const R noDieChannel = R::unsupported(QStringLiteral("未发现可识别的 CPU 温度通道"));
const R noFanSpeed = R::unsupported(QStringLiteral("hwmon 未返回明确的风扇 RPM"));
const R temperatureRefused = R::permissionDenied(QStringLiteral("无权读取 hwmon 温度传感器"));
const R fanRefused = R::permissionDenied(QStringLiteral("无权读取 hwmon 风扇传感器"));

const std::vector<QByteArray> kIntelDieInputs = {"hwmon10/temp1_input", "hwmon10/temp2_input",
                                                 "hwmon10/temp3_input", "hwmon10/temp4_input",
                                                 "hwmon10/temp5_input", "thermal_zone1/temp"};

using M = MachineCase;
// clang-format off
INSTANTIATE_TEST_SUITE_P(Fixtures, HwmonSensorProbeOnMachines, testing::Values(
    // Only the one good coretemp channel survives empty, junk, negative and
    // absurd files; no fan file holds a speed (65535 is the "no fan" value of
    // some Super I/O chips).
    M{"BrokenSensors", "broken-sensors", {}, 0, temperature(51.5), noFanSpeed},
    // Every input and zone temperature refused.
    M{"EverythingRefused", "intel-laptop", {"_input", "/temp"}, EACCES, temperatureRefused,
      fanRefused},
    // Every input refused where no thermal zone speaks: the channels tried
    // stay channels, so the refusal is what is reported.
    M{"AllHwmonRefused", "broken-sensors", {"_input"}, EACCES, temperatureRefused, fanRefused},
    // Every die channel refused (acpitz, nvme and the ThinkPad are never
    // opened): the refusal is what hides the die, so it is what is reported.
    M{"DieChannelsRefused", "intel-laptop", kIntelDieInputs, EACCES, temperatureRefused,
      fan(2400.0)},
    // One die channel refused, the others junk: not every one tried was
    // refused, so nothing recognisable is what is reported.
    M{"GoodChannelRefusedBesideJunk", "broken-sensors", {"hwmon0/temp5_input"}, EACCES,
      noDieChannel, noFanSpeed},
    // The package refused: the cores 49, 53 and 48 and the x86_pkg_temp zone 52
    // still speak, the zone as the package.
    M{"PackageRefused", "intel-laptop", {"hwmon10/temp1_input", "hwmon10/temp2_input"}, EACCES,
      temperature(52.0), fan(2400.0)},
    // Both package channels refused: the median of the cores.
    M{"PackagesRefused", "intel-laptop", {"hwmon10/temp1_input", "thermal_zone1/temp"}, EACCES,
      temperature(49.5), fan(2400.0)},
    // Files that vanish between listing and reading are no refusal.
    M{"InputsVanished", "intel-laptop", {"_input", "/temp"}, ENOENT, noDieChannel, noFanSpeed},
    // The names and labels vanish: channels fall back to "<hwmonN> temp<n>"
    // and the zone's directory name, none of which names the die.
    M{"NamesVanished", "intel-laptop", {"/name", "_label", "/type"}, ENOENT, noDieChannel,
      fan(2400.0)}),
    [](const testing::TestParamInfo<M> &info) { return std::string(info.param.label); });
// clang-format on

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
