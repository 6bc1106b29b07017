#include "platform/linux/HwmonSensorProbe.h"
#include "platform/linux/LinuxGPUUsageProbe.h"
#include "platform/linux/SysfsDirectory.h"
#include "platform/linux/ThermalZoneThermalStateProbe.h"

#include "support/FixtureTable.h"
#include "support/Fixtures.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <memory>
#include <set>
#include <string>
#include <tuple>

#include <dlfcn.h>

namespace {

// The readers' files are the fixture's; tests run as root, where mode 000
// stops no read, so refusals are made here.
QString fixtureSys(const QString &machine)
{
    return fixturePath(machine + QStringLiteral("/sys"));
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
// probe's copy of the library, and with it the counts. Every NVML function
// counts in kwFakeNvmlCalls, init and shutdown also in their own. No library
// has made no calls.
class FakeNvmlCounters {
public:
    explicit FakeNvmlCounters(const char *path) : m_handle(::dlopen(path, RTLD_NOW), ::dlclose) {}
    int operator()(const char *counter) const
    {
        const auto count =
            m_handle ? static_cast<int *>(::dlsym(m_handle.get(), counter)) : nullptr;
        return count ? *count : 0;
    }

private:
    std::unique_ptr<void, int (*)(void *)> m_handle;
};

using R = SensorReading<double>;
using Files = std::set<std::string>;

// "<value>@<source>" is a figure, "!<reason>" a refusal, anything else the
// reason there is none.
R readingFrom(const QString &text)
{
    if (text.startsWith(u'!'))
        return R::permissionDenied(text.mid(1));
    const QStringList figure = text.split(u'@');
    return figure.size() == 2 ? R::available(figure[0].toDouble(), figure[1])
                              : R::unsupported(text);
}

// Every value file that exists and may be opened on `tree`
// (tests/fixtures/tables/sensor-values-read).
Files valuesRead(const QString &tree)
{
    Files files;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("sensor-values-read"))) {
        if (row.text(0) == tree)
            files.insert(row.fields[1].toStdString());
    }
    return files;
}

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

// Temperature, fan, thermal state and GPU of each machine
// (tests/fixtures/tables/machine-sensors), each from the real probe over its
// tree, and what they opened to get there.
TEST(MachineSensors, ReadTheMachineWithoutWakingAnyDevice)
{
    const FakeNvmlCounters nvml(KW_FAKE_NVML_BUSY_PATH);
    for (const FixtureRow &row : fixtureTable(QStringLiteral("machine-sensors"))) {
        SCOPED_TRACE(row.where);
        const QString sys = fixtureSys(*row.text(0));
        auto opened = std::make_shared<std::vector<QByteArray>>();
        const int nvmlCallsBefore = nvml("kwFakeNvmlCalls");

        HwmonSensorProbe sensors(sys, recordingReader(opened));
        const AppleSensorReadings readings = sensors.read();
        EXPECT_EQ(readings.temperature, readingFrom(*row.text(1)));
        EXPECT_EQ(readings.fan, readingFrom(*row.text(2)));
        // Nothing is kept: a second tick reads the same files to the same end.
        EXPECT_EQ(sensors.read(), readings);
        EXPECT_EQ(systemThermalStateRawText(
                      ThermalZoneThermalStateProbe(sys, recordingReader(opened)).read()),
                  row.text(3));
        LinuxGPUUsageProbe gpu(sys, KW_FAKE_NVML_BUSY_PATH, recordingReader(opened));
        EXPECT_EQ(gpu.sample(), readingFrom(*row.text(4)));
        EXPECT_EQ(nvml("kwFakeNvmlCalls") > nvmlCallsBefore, row.fields[5] == "asks NVML");

        const QByteArray root = sys.toLocal8Bit() + '/';
        Files valuesRead;
        for (const QByteArray &path : *opened) {
            if (isValueFile(path) && QFileInfo::exists(QString::fromLocal8Bit(path)))
                valuesRead.insert(path.mid(root.size()).toStdString());
        }
        EXPECT_EQ(valuesRead, ::valuesRead(*row.text(0)));
        // Of a sleeping device, only whether it sleeps and what it is (the PCI
        // vendor and class, which the kernel keeps from enumeration) are read.
        for (const QByteArray &device : sleepingDevices(sys)) {
            const Files allowed = {(device + "power/runtime_status").toStdString(),
                                   (device + "device/power/runtime_status").toStdString(),
                                   (device + "vendor").toStdString(),
                                   (device + "class").toStdString()};
            for (const QByteArray &path : *opened) {
                if (path.startsWith(device)) {
                    EXPECT_TRUE(allowed.contains(path.toStdString())) << path.toStdString();
                }
            }
        }
    }
}

// The hwmon readings when files are refused or vanish, on the same trees
// (tests/fixtures/tables/hwmon-failing-files).
TEST(HwmonSensorProbe, ReadingsWhenFilesFail)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("hwmon-failing-files"))) {
        std::vector<QByteArray> endings;
        for (const QByteArray &ending : row.fields[2].split(','))
            if (!ending.isEmpty())
                endings.push_back(ending);
        const int error = row.fields[1] == "EACCES" ? EACCES : ENOENT;
        const AppleSensorReadings readings =
            HwmonSensorProbe(fixtureSys(*row.text(0)), failingReader(endings, error)).read();
        EXPECT_EQ(readings.temperature, readingFrom(*row.text(3))) << row.where;
        EXPECT_EQ(readings.fan, readingFrom(*row.text(4))) << row.where;
    }
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

// The GPU routes one by one: junk in sysfs, NVML's session and its failures.
TEST(AmdgpuBusyPercent, ReadsCardsAndSkipsJunk)
{
    // card0 holds junk, card1 an out-of-range value, which the GPU reading's
    // table shows clamped.
    EXPECT_EQ(readAmdgpuBusyPercents(fixtureSys(QStringLiteral("broken-sensors")).toLocal8Bit(),
                                     systemFileReader()),
              std::vector<double>{130.0});
}

// The Optimus laptop's NVIDIA card wakes, works, sleeps and wakes again. The
// NVML session runs only while the card is awake: asleep, it counts as idle
// and the library is not called at all.
TEST(LinuxGPUUsageProbe, NvmlRunsOnlyWhileAnNvidiaCardIsAwake)
{
    auto awake = std::make_shared<bool>(true);
    auto vendorReads = std::make_shared<int>(0);
    const QByteArray card = "/bus/pci/devices/0000:01:00.0/power/runtime_status";
    KernelFileReader reader = [awake, vendorReads, card](const QByteArray &path) {
        *vendorReads += path.endsWith("/vendor");
        if (path.endsWith(card))
            return FileReadResult{QByteArray(*awake ? "active\n" : "suspended\n"), 0};
        return readKernelFile(path);
    };
    const FakeNvmlCounters nvml(KW_FAKE_NVML_BUSY_PATH);
    const int initBefore = nvml("kwFakeNvmlInitCalls");
    const int shutdownBefore = nvml("kwFakeNvmlShutdownCalls");
    {
        LinuxGPUUsageProbe probe(fixtureSys(QStringLiteral("hybrid-nvidia-laptop")),
                                 KW_FAKE_NVML_BUSY_PATH, reader);
        // Awake or not, then the sessions started and ended so far; awake,
        // the stand-in's busiest device gives 37 %.
        const std::tuple<bool, int, int> ticks[] = {
            {true, 1, 0}, {true, 1, 0}, {false, 1, 1}, {false, 1, 1}, {true, 2, 1}};
        int firstTickVendorReads = 0;
        for (std::size_t tick = 0; tick < std::size(ticks); ++tick) {
            const auto [isAwake, started, ended] = ticks[tick];
            *awake = isAwake;
            const int callsBefore = nvml("kwFakeNvmlCalls");
            EXPECT_EQ(probe.sample(), R::available(isAwake ? 37.0 : 0.0, "NVIDIA NVML")) << tick;
            EXPECT_EQ(nvml("kwFakeNvmlInitCalls") - initBefore, started) << tick;
            EXPECT_EQ(nvml("kwFakeNvmlShutdownCalls") - shutdownBefore, ended) << tick;
            // What each device is was read on the first tick only.
            if (tick == 0)
                firstTickVendorReads = *vendorReads;
            EXPECT_EQ(*vendorReads, firstTickVendorReads) << tick;
            // Asleep, the library is not called, but for the one nvmlShutdown
            // that ends the session the card went to sleep with.
            if (!isAwake) {
                EXPECT_EQ(nvml("kwFakeNvmlCalls") - callsBefore,
                          std::get<0>(ticks[tick - 1]) ? 1 : 0)
                    << tick;
            }
        }
    }
    EXPECT_EQ(nvml("kwFakeNvmlShutdownCalls") - shutdownBefore, 2);
    EXPECT_GT(*vendorReads, 0);
}

TEST(LinuxGPUUsageProbe, UnusableLibrariesGiveNoDeviceAndAreRetriedAtTheNextTick)
{
    const std::tuple<const char *, QByteArray, bool> cases[] = {
        {"no library", "/nonexistent/libnvidia-ml.so.1", false},
        {"init fails", KW_FAKE_NVML_INIT_FAILS_PATH, true},
        {"a function is missing", KW_FAKE_NVML_MISSING_SYMBOL_PATH, false},
    };
    for (const auto &[name, path, initAttempted] : cases) {
        const FakeNvmlCounters counters(path.constData());
        const int initBefore = counters("kwFakeNvmlInitCalls");
        // An awake NVIDIA card, so NVML is asked.
        LinuxGPUUsageProbe probe(fixtureSys(QStringLiteral("intel-server-2s")), path);
        for (int tick = 1; tick <= 3; ++tick) {
            EXPECT_EQ(probe.sample(),
                      R::unsupported(QStringLiteral("未发现可读取的 GPU 利用率通道")))
                << name << " tick " << tick;
            EXPECT_EQ(counters("kwFakeNvmlInitCalls") - initBefore, initAttempted ? tick : 0)
                << name;
        }
        // A failed init is never shut down: there is no session to end.
        EXPECT_EQ(counters("kwFakeNvmlShutdownCalls"), 0) << name;
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

// The rule's edges are the fixture trees' (a zone exactly at its trip, an
// unreadable temperature, no zones); trip kinds the kernel may add later are
// not thermal pressure.
TEST(ThermalTrips, UnknownTripKindsAreNoTrips)
{
    EXPECT_EQ(thermalStateFromTrips({{99000, {ThermalZoneTrips::Trip{"mystery", 1000}}}}),
              SystemThermalState::unknown);
}

} // namespace
