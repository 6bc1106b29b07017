#include "platform/linux/HwmonSensorProbe.h"
#include "platform/linux/LinuxGPUUsageProbe.h"
#include "platform/linux/ThermalZoneThermalStateProbe.h"

#include "support/FixtureTable.h"
#include "support/SysfsTesting.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <set>
#include <string>

namespace {

using R = SensorReading<double>;
using T = SystemThermalState;
using Files = std::set<std::string>;

// What the machine-wide readers make of one machine's sysfs tree.
struct Machine {
    const char *tree;
    R temperature;
    R fan;
    T thermal;
    R gpu;
    bool nvmlAsked;
};

// Every value file that exists and may be opened on `tree`
// (tests/fixtures/tables/sensor-values-read).
Files valuesRead(const char *tree)
{
    Files files;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("sensor-values-read"))) {
        if (row.fields[0] == tree)
            files.insert(row.fields[1].toStdString());
    }
    return files;
}

void PrintTo(const Machine &machine, std::ostream *out)
{
    *out << machine.tree;
}

R temperature(double celsius)
{
    return R::available(celsius, QStringLiteral("Linux hwmon CPU 传感器"));
}
R fan(double rpm)
{
    return R::available(rpm, QStringLiteral("Linux hwmon 风扇传感器"));
}
R sysfsBusy(double percent)
{
    return R::available(percent, QStringLiteral("Linux GPU busy percent"));
}
R nvmlBusy(double percent)
{
    return R::available(percent, QStringLiteral("NVIDIA NVML"));
}
const R noTemperatureInterface =
    R::unsupported(QStringLiteral("当前系统没有可用的 hwmon 温度传感器接口"));
const R noFanSensor = R::unsupported(QStringLiteral("系统没有可读取的风扇转速传感器"));
const R noGPU = R::unsupported(QStringLiteral("未发现可读取的 GPU 利用率通道"));

bool isValueFile(const QByteArray &path)
{
    return path.endsWith("_input") || path.endsWith("/temp") || path.endsWith("/gpu_busy_percent");
}

// The devices of the tree that the kernel has put to sleep, as "<device>/".
// A class device (hwmonN, cardN) whose parent sleeps is part of it: reading
// hwmonN/fan1_input wakes the GPU below it.
std::vector<QByteArray> sleepingDevices(const QString &sys)
{
    std::vector<QByteArray> devices;
    QDirIterator files(sys, {QStringLiteral("runtime_status")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QByteArray path = files.next().toLocal8Bit();
        if (readKernelFile(path).bytes.value_or("").trimmed() != "suspended")
            continue;
        const QByteArray status = "power/runtime_status";
        QByteArray device = path.chopped(status.size());
        if (device.endsWith("/device/"))
            device.chop(int(sizeof "device/") - 1);
        devices.push_back(device);
    }
    return devices;
}

class MachineSensors : public testing::TestWithParam<Machine> {};

// Temperature, fan, thermal state and GPU, each from the real probe over the
// tree, and what they opened to get there.
TEST_P(MachineSensors, ReadTheMachineWithoutWakingAnyDevice)
{
    const Machine &machine = GetParam();
    const QString sys = fixtureSys(machine.tree);
    auto opened = std::make_shared<std::vector<QByteArray>>();
    const FakeNvmlCounters nvml(KW_FAKE_NVML_BUSY_PATH);
    const int nvmlCallsBefore = nvml.calls();

    HwmonSensorProbe sensors(sys, recordingReader(opened));
    const AppleSensorReadings readings = sensors.read();
    EXPECT_EQ(readings.temperature, machine.temperature);
    EXPECT_EQ(readings.fan, machine.fan);
    // Nothing is kept: a second tick reads the same files to the same end.
    EXPECT_EQ(sensors.read(), readings);
    EXPECT_EQ(ThermalZoneThermalStateProbe(sys, recordingReader(opened)).read(), machine.thermal);
    LinuxGPUUsageProbe gpu(sys, KW_FAKE_NVML_BUSY_PATH, recordingReader(opened));
    EXPECT_EQ(gpu.sample(), machine.gpu);
    EXPECT_EQ(nvml.calls() > nvmlCallsBefore, machine.nvmlAsked);

    const QByteArray root = sys.toLocal8Bit() + '/';
    Files valuesRead;
    for (const QByteArray &path : *opened) {
        if (isValueFile(path) && QFileInfo::exists(QString::fromLocal8Bit(path)))
            valuesRead.insert(path.mid(root.size()).toStdString());
    }
    EXPECT_EQ(valuesRead, ::valuesRead(machine.tree));
    // Of a sleeping device, only whether it sleeps and what it is (the PCI
    // vendor and class, which the kernel keeps from enumeration) are read.
    for (const QByteArray &device : sleepingDevices(sys)) {
        const Files allowed = {(device + "power/runtime_status").toStdString(),
                               (device + "device/power/runtime_status").toStdString(),
                               (device + "vendor").toStdString(), (device + "class").toStdString()};
        for (const QByteArray &path : *opened) {
            if (path.startsWith(device)) {
                EXPECT_TRUE(allowed.contains(path.toStdString())) << path.toStdString();
            }
        }
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Trees, MachineSensors, testing::Values(
    // coretemp "Package id 0" 52 beside cores 48..53, and the x86_pkg_temp
    // zone. acpitz, the battery, the NVMe and the ThinkPad's own temp1 are
    // not the die. acpitz is read for its critical trip.
    Machine{"intel-laptop", temperature(52.0), fan(2400.0), T::nominal, noGPU, false},
    // Packages 39 and 42: the hotter socket, not the median of all cores.
    // x86_pkg_temp's trips of 0 are placeholders. An awake NVIDIA compute
    // card (the stand-in library gives 12 % and 37 %) beside the BMC's VGA.
    Machine{"intel-server-2s", temperature(42.0), noFanSensor, T::unknown, nvmlBusy(37.0), true},
    // k10temp Tdie 61.25 (Tctl equal, CCDs 58.5 and 52). Board fans 0, 1150,
    // 0 and 870 give 1010; the amdgpu fan is the card's.
    Machine{"amd-desktop", temperature(61.25), fan(1010.0), T::unknown, sysfsBusy(23.0), false},
    // Tctl 58 is Tdie 38 plus the chip's offset.
    Machine{"ryzen-1800x", temperature(38.0), noFanSensor, T::unknown, noGPU, false},
    // Without Tdie, Tctl is the package. The idle card's stopped fan is not
    // the machine's, which then has none to read.
    Machine{"amd-gpu-fan-desktop", temperature(48.875), noFanSensor, T::unknown, sysfsBusy(3.0),
            false},
    // The sleeping amdgpu is idle; neither its busy file nor its hwmon fan
    // and temperature are opened.
    Machine{"hybrid-amd-laptop", temperature(47.0), fan(2900.0), T::nominal, sysfsBusy(0.0), false},
    // The sleeping NVIDIA card is idle and NVML is never asked: its session
    // would wake the card. The ThinkPad's fan stands still.
    Machine{"hybrid-nvidia-laptop", temperature(51.0), fan(0.0), T::nominal, nvmlBusy(0.0), false},
    // applesmc's fan on the parent device; its SMC temperatures are not the die.
    Machine{"intel-mac", temperature(45.0), fan(1201.0), T::unknown, noGPU, false},
    // The SoC zone past its 60 degree fan trip: cooling engaged.
    Machine{"raspberry-pi-5", temperature(62.15), fan(2960.0), T::fair, noGPU, false},
    // "CPU-therm" is the die; GPU-therm is read for its trip only.
    Machine{"jetson-xavier", temperature(41.5), noFanSensor, T::nominal, noGPU, false},
    // "soc-thermal" past its passive trip: the kernel throttles.
    Machine{"rk3588", temperature(86.0), noFanSensor, T::serious, noGPU, false},
    // The SATA drive's and the NVMe's sensors stay unread.
    Machine{"mini-pc", temperature(55.0), noFanSensor, T::nominal, noGPU, false},
    Machine{"server-vm", noTemperatureInterface, noFanSensor, T::unknown, noGPU, false}),
    [](const testing::TestParamInfo<Machine> &info) {
        std::string name = info.param.tree;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });
// clang-format on

} // namespace
