#include "platform/linux/LinuxGPUUsageProbe.h"

#include "support/SysfsTesting.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {

using R = SensorReading<double>;
const QString noGPU = QStringLiteral("未发现可读取的 GPU 利用率通道");
const QByteArray noLibrary = "/nonexistent/libnvidia-ml.so.1";

// The fake library's call counters, reached through a handle of our own: a
// second dlopen of the same path shares the probe's copy of the library.
class FakeNvmlCounters {
public:
    explicit FakeNvmlCounters(const char *path) : m_handle(::dlopen(path, RTLD_NOW | RTLD_LOCAL))
    {
        EXPECT_NE(m_handle, nullptr) << ::dlerror();
    }
    ~FakeNvmlCounters()
    {
        if (m_handle)
            ::dlclose(m_handle);
    }
    int initCalls() const { return call("kwFakeNvmlInitCalls"); }
    int shutdownCalls() const { return call("kwFakeNvmlShutdownCalls"); }

private:
    int call(const char *name) const
    {
        auto function = reinterpret_cast<int (*)()>(::dlsym(m_handle, name));
        return function ? function() : -1;
    }
    void *m_handle;
};

TEST(AmdgpuBusyPercent, ReadsCardsAndSkipsJunk)
{
    // card0 holds junk, card1 an out-of-range value that the fold clamps.
    EXPECT_EQ(
        readAmdgpuBusyPercents(fixtureSys("broken-sensors").toLocal8Bit(), systemFileReader()),
        std::vector<double>{130.0});
}

// A hybrid laptop: the Intel card and the discrete amdgpu asleep, a second
// amdgpu awake at 41 %. The sleeping amdgpu is idle and its busy file (99,
// a value it would only give once woken) is never opened.
TEST(AmdgpuBusyPercent, ASleepingCardIsIdleAndNotWoken)
{
    auto opened = std::make_shared<std::vector<QByteArray>>();
    EXPECT_EQ(
        readAmdgpuBusyPercents(fixtureSys("hybrid-laptop").toLocal8Bit(), recordingReader(opened)),
        (std::vector<double>{0.0, 41.0}));
    for (const QByteArray &path : *opened)
        EXPECT_FALSE(path.endsWith("card1/device/gpu_busy_percent")) << path.constData();
}

// The busiest of the sysfs cards and NVML's devices (12 % and 37 %, and a
// third whose handle fails) names the source.
TEST(LinuxGPUUsageProbe, TheBusiestRouteOnEachFixtureNamesTheSource)
{
    const R sysfs23 = R::available(23.0, QStringLiteral("Linux GPU busy percent"));
    const R sysfs100 = R::available(100.0, QStringLiteral("Linux GPU busy percent"));
    const R nvml37 = R::available(37.0, QStringLiteral("NVIDIA NVML"));
    const std::tuple<const char *, QByteArray, R> cases[] = {
        {"amd-desktop", noLibrary, sysfs23},
        {"broken-sensors", noLibrary, sysfs100}, // clamped from 130
        {"intel-laptop", noLibrary, R::unsupported(noGPU)},
        {"server-vm", noLibrary, R::unsupported(noGPU)},
        {"amd-desktop", KW_FAKE_NVML_BUSY_PATH, nvml37},
        {"broken-sensors", KW_FAKE_NVML_BUSY_PATH, sysfs100},
    };
    for (const auto &[machine, library, expected] : cases) {
        LinuxGPUUsageProbe probe(fixtureSys(machine), library);
        EXPECT_EQ(probe.sample(), expected) << machine << ' ' << library.constData();
    }
}

TEST(LinuxGPUUsageProbe, NvmlGivesTheBusiestDeviceAndKeepsItsSession)
{
    const FakeNvmlCounters counters(KW_FAKE_NVML_BUSY_PATH);
    const int initBefore = counters.initCalls();
    const int shutdownBefore = counters.shutdownCalls();
    {
        // Devices at 12 % and 37 %, and a third whose handle fails.
        LinuxGPUUsageProbe probe(fixtureSys("server-vm"), KW_FAKE_NVML_BUSY_PATH);
        for (int tick = 0; tick < 3; ++tick)
            EXPECT_EQ(probe.sample(), R::available(37.0, QStringLiteral("NVIDIA NVML"))) << tick;
        EXPECT_EQ(counters.initCalls() - initBefore, 1);
        EXPECT_EQ(counters.shutdownCalls() - shutdownBefore, 0);
    }
    EXPECT_EQ(counters.shutdownCalls() - shutdownBefore, 1);
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
        LinuxGPUUsageProbe probe(fixtureSys("server-vm"), path);
        for (int tick = 1; tick <= 3; ++tick) {
            EXPECT_EQ(probe.sample(), R::unsupported(noGPU)) << name << " tick " << tick;
            const int initCalls = counters ? counters->initCalls() - initBefore : 0;
            EXPECT_EQ(initCalls, initAttempted ? tick : 0) << name;
        }
        // A failed init is never shut down: there is no session to end.
        EXPECT_EQ(counters ? counters->shutdownCalls() : 0, 0) << name;
    }
}

} // namespace
