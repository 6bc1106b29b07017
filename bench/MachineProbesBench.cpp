// CPU time of one tick of every machine-wide probe together, on this
// machine: CPU, memory, thermal state, sensors, GPU, disk and network.
// Everything but the process probe, whose cost grows with the process count.

#include "platform/linux/GetifaddrsNetworkProbe.h"
#include "platform/linux/HwmonSensorProbe.h"
#include "platform/linux/LinuxGPUUsageProbe.h"
#include "platform/linux/ProcDiskstatsDiskProbe.h"
#include "platform/linux/ProcMeminfoMemoryProbe.h"
#include "platform/linux/ProcStatCPUUsageProbe.h"
#include "platform/linux/ThermalZoneThermalStateProbe.h"

#include <benchmark/benchmark.h>

namespace {

void machineProbesTick(benchmark::State &state)
{
    ProcStatCPUUsageProbe cpu;
    ProcMeminfoMemoryProbe memory;
    ThermalZoneThermalStateProbe thermal;
    HwmonSensorProbe sensors;
    LinuxGPUUsageProbe gpu;
    ProcDiskstatsDiskProbe disk;
    GetifaddrsNetworkProbe network;
    // The rate probes see time advance by one tick per iteration, so every
    // iteration after the first computes a real rate.
    TimePoint now = TimePoint::now();
    for (auto _ : state) {
        now = now.addingSeconds(2.0);
        benchmark::DoNotOptimize(sensors.read());
        benchmark::DoNotOptimize(cpu.sample());
        benchmark::DoNotOptimize(thermal.read());
        benchmark::DoNotOptimize(gpu.sample());
        benchmark::DoNotOptimize(disk.sample(now));
        benchmark::DoNotOptimize(memory.sample());
        benchmark::DoNotOptimize(network.sample(now));
    }
}
BENCHMARK(machineProbesTick)->Unit(benchmark::kMicrosecond);

// The same tick over the AMD desktop fixture, where the sensor walk has
// four hwmon devices and a DRM card to read.
void sensorWalkOnDesktopFixture(benchmark::State &state)
{
    HwmonSensorProbe sensors(QStringLiteral(KW_BENCH_FIXTURES_DIR "/amd-desktop/sys"));
    LinuxGPUUsageProbe gpu(QStringLiteral(KW_BENCH_FIXTURES_DIR "/amd-desktop/sys"),
                           "/nonexistent/libnvidia-ml.so.1");
    for (auto _ : state) {
        benchmark::DoNotOptimize(sensors.read());
        benchmark::DoNotOptimize(gpu.sample());
    }
}
BENCHMARK(sensorWalkOnDesktopFixture)->Unit(benchmark::kMicrosecond);

} // namespace
