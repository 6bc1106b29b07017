#include "platform/linux/LinuxGPUUsageProbe.h"

#include "support/SysfsTesting.h"

#include <gtest/gtest.h>

namespace {

using R = SensorReading<double>;
const QString noGPU = QStringLiteral("未发现可读取的 GPU 利用率通道");
const QByteArray noLibrary = "/nonexistent/libnvidia-ml.so.1";

TEST(AmdgpuBusyPercent, ReadsCardsAndSkipsJunk)
{
    // card0 holds junk, card1 an out-of-range value that the fold clamps.
    EXPECT_EQ(
        readAmdgpuBusyPercents(fixtureSys("broken-sensors").toLocal8Bit(), systemFileReader()),
        std::vector<double>{130.0});
    LinuxGPUUsageProbe probe(fixtureSys("broken-sensors"), noLibrary);
    EXPECT_EQ(probe.sample(), R::available(100.0, QStringLiteral("Linux GPU busy percent")));
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
            EXPECT_EQ(probe.sample(), R::available(t.percent, QStringLiteral("NVIDIA NVML")))
                << tick;
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
            EXPECT_EQ(probe.sample(), R::unsupported(noGPU)) << name << " tick " << tick;
            const int initCalls = counters ? counters->initCalls() - initBefore : 0;
            EXPECT_EQ(initCalls, initAttempted ? tick : 0) << name;
        }
        // A failed init is never shut down: there is no session to end.
        EXPECT_EQ(counters ? counters->shutdownCalls() : 0, 0) << name;
    }
}

} // namespace
