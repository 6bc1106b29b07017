#include "platform/linux/HwmonSensorProbe.h"
#include "platform/linux/LinuxGPUUsageProbe.h"
#include "platform/linux/SysfsDirectory.h"
#include "platform/linux/ThermalZoneThermalStateProbe.h"

#include "support/FixtureTable.h"
#include "support/Fixtures.h"
#include "support/RowName.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFileInfo>

#include <cerrno>
#include <memory>
#include <set>
#include <string>

#include <dlfcn.h>

namespace {

using rows::PrintTo;

// The readers' files are the fixture's; tests run as root, where mode 000
// stops no read, so refusals are made here.
QString fixtureSys(const char *machine)
{
    return fixturePath(QLatin1String(machine) + QStringLiteral("/sys"));
}

// The system reader, except that files whose path ends with one of `endings`
// fail with `error`: EACCES for a refusal, ENOENT for a file that vanished
// after the directory was listed.
KernelFileReader failingReader(std::vector<QByteArray> endings, int error)
{
    return [endings = std::move(endings), error](const QByteArray &path) {
        for (const QByteArray &ending : endings) {
            if (path.endsWith(ending))
                return FileReadResult{std::nullopt, error};
        }
        return readKernelFile(path);
    };
}

// The system reader, noting every path it is asked for in `opened`.
KernelFileReader recordingReader(std::shared_ptr<std::vector<QByteArray>> opened)
{
    return [opened = std::move(opened)](const QByteArray &path) {
        opened->push_back(path);
        return readKernelFile(path);
    };
}

// The call counters of the stand-in NVML library (tests/fakes), reached
// through a handle of our own: a second dlopen of the same path shares the
// probe's copy of the library, and with it the counts.
class FakeNvmlCounters {
public:
    explicit FakeNvmlCounters(const char *path) : m_handle(::dlopen(path, RTLD_NOW), ::dlclose)
    {
        EXPECT_NE(m_handle, nullptr) << ::dlerror();
    }

    int calls() const { return count("kwFakeNvmlCalls"); } // every NVML function
    int initCalls() const { return count("kwFakeNvmlInitCalls"); }
    int shutdownCalls() const { return count("kwFakeNvmlShutdownCalls"); }

private:
    int count(const char *counter) const
    {
        const auto function =
            m_handle ? reinterpret_cast<int (*)()>(::dlsym(m_handle.get(), counter)) : nullptr;
        return function ? function() : -1;
    }
    std::unique_ptr<void, int (*)(void *)> m_handle;
};

using R = SensorReading<double>;
using T = SystemThermalState;
using Files = std::set<std::string>;

// What the machine-wide readers make of one machine's sysfs tree.
struct Machine {
    const char *name; // of the fixture tree
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
    const QString sys = fixtureSys(machine.name);
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
    EXPECT_EQ(valuesRead, ::valuesRead(machine.name));
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
    RowName());
// clang-format on

// The hwmon readings when files are refused or vanish, on the same trees.
struct MachineCase {
    const char *name;
    const char *machine;
    std::vector<QByteArray> refusedEndings;
    int error;
    R temperature;
    R fan;
};

class HwmonSensorProbeOnMachines : public testing::TestWithParam<MachineCase> {};

TEST_P(HwmonSensorProbeOnMachines, ReadsTheFoldedTemperatureAndFan)
{
    const MachineCase &c = GetParam();
    HwmonSensorProbe probe(fixtureSys(c.machine), failingReader(c.refusedEndings, c.error));
    const AppleSensorReadings readings = probe.read();
    EXPECT_EQ(readings.temperature, c.temperature);
    EXPECT_EQ(readings.fan, c.fan);
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
    RowName());
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

// The GPU routes one by one: junk in sysfs, NVML's session and its failures.
const QByteArray noLibrary = "/nonexistent/libnvidia-ml.so.1";

TEST(AmdgpuBusyPercent, ReadsCardsAndSkipsJunk)
{
    // card0 holds junk, card1 an out-of-range value that the fold clamps.
    EXPECT_EQ(
        readAmdgpuBusyPercents(fixtureSys("broken-sensors").toLocal8Bit(), systemFileReader()),
        std::vector<double>{130.0});
    LinuxGPUUsageProbe probe(fixtureSys("broken-sensors"), noLibrary);
    EXPECT_EQ(probe.sample(), sysfsBusy(100.0));
}

// The Optimus laptop's NVIDIA card wakes, works, sleeps and wakes again. The
// NVML session runs only while the card is awake: asleep, it counts as idle
// and the library is not called at all.
TEST(LinuxGPUUsageProbe, NvmlRunsOnlyWhileAnNvidiaCardIsAwake)
{
    auto awake = std::make_shared<bool>(true);
    const QByteArray card = "/bus/pci/devices/0000:01:00.0/power/runtime_status";
    KernelFileReader reader = [awake, card](const QByteArray &path) {
        if (path.endsWith(card))
            return FileReadResult{QByteArray(*awake ? "active\n" : "suspended\n"), 0};
        return readKernelFile(path);
    };
    const FakeNvmlCounters nvml(KW_FAKE_NVML_BUSY_PATH);
    const int initBefore = nvml.initCalls();
    const int shutdownBefore = nvml.shutdownCalls();
    {
        LinuxGPUUsageProbe probe(fixtureSys("hybrid-nvidia-laptop"), KW_FAKE_NVML_BUSY_PATH,
                                 reader);
        const struct {
            bool awake;
            double percent; // the stand-in's devices give 12 % and 37 %
            int sessionsStarted;
            int sessionsEnded;
        } ticks[] = {{true, 37.0, 1, 0},
                     {true, 37.0, 1, 0},
                     {false, 0.0, 1, 1},
                     {false, 0.0, 1, 1},
                     {true, 37.0, 2, 1}};
        int tick = 0;
        for (const auto &t : ticks) {
            *awake = t.awake;
            const int callsBefore = nvml.calls();
            EXPECT_EQ(probe.sample(), nvmlBusy(t.percent)) << tick;
            EXPECT_EQ(nvml.initCalls() - initBefore, t.sessionsStarted) << tick;
            EXPECT_EQ(nvml.shutdownCalls() - shutdownBefore, t.sessionsEnded) << tick;
            // Asleep, the library is not called, but for the one nvmlShutdown
            // that ends the session the card went to sleep with.
            if (!t.awake) {
                EXPECT_EQ(nvml.calls() - callsBefore, ticks[tick - 1].awake ? 1 : 0) << tick;
            }
            ++tick;
        }
    }
    EXPECT_EQ(nvml.shutdownCalls() - shutdownBefore, 2);
}

TEST(LinuxGPUUsageProbe, UnusableLibrariesGiveNoDeviceAndAreRetriedAtTheNextTick)
{
    const std::tuple<const char *, QByteArray, bool> cases[] = {
        {"no library", noLibrary, false},
        {"init fails", KW_FAKE_NVML_INIT_FAILS_PATH, true},
        {"a function is missing", KW_FAKE_NVML_MISSING_SYMBOL_PATH, false},
    };
    for (const auto &[name, path, initAttempted] : cases) {
        std::optional<FakeNvmlCounters> counters;
        if (path != noLibrary)
            counters.emplace(path.constData());
        const int initBefore = counters ? counters->initCalls() : 0;
        // An awake NVIDIA card, so NVML is asked.
        LinuxGPUUsageProbe probe(fixtureSys("intel-server-2s"), path);
        for (int tick = 1; tick <= 3; ++tick) {
            EXPECT_EQ(probe.sample(), noGPU) << name << " tick " << tick;
            const int initCalls = counters ? counters->initCalls() - initBefore : 0;
            EXPECT_EQ(initCalls, initAttempted ? tick : 0) << name;
        }
        // A failed init is never shut down: there is no session to end.
        EXPECT_EQ(counters ? counters->shutdownCalls() : 0, 0) << name;
    }
}

// The thermal state from trip points: odd zone trees, and the rule's edges.
TEST(ThermalZoneFixtures, TripPointsGiveTheState)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("thermal-zone-states"))) {
        ThermalZoneThermalStateProbe probe(fixturePath("thermal-zones/" + *row.text(0)));
        EXPECT_EQ(systemThermalStateRawText(probe.read()), row.text(1)) << row.where;
    }
}

TEST(ThermalTrips, EdgesOfTheTripRule)
{
    using Trip = ThermalZoneTrips::Trip;
    EXPECT_EQ(thermalStateFromTrips({}), SystemThermalState::unknown);
    EXPECT_EQ(thermalStateFromTrips({{70000, {Trip{"active", 70000}}}}), SystemThermalState::fair);
    EXPECT_EQ(thermalStateFromTrips({{69999, {Trip{"active", 70000}}}}),
              SystemThermalState::nominal);
    // Trip kinds the kernel may add later are not thermal pressure.
    EXPECT_EQ(thermalStateFromTrips({{99000, {Trip{"mystery", 1000}}}}),
              SystemThermalState::unknown);
    EXPECT_EQ(thermalStateFromTrips({{std::nullopt, {Trip{"critical", 1000}}}}),
              SystemThermalState::nominal);
}

} // namespace
