// The sensor and GPU walk over a fixture desktop with real sensors. The tick
// of every machine-wide probe on this machine is BM_SamplerTickWithoutProcesses.

#include "platform/linux/HwmonSensorProbe.h"
#include "platform/linux/LinuxGPUUsageProbe.h"

#include <benchmark/benchmark.h>

namespace {

// Over the AMD desktop fixture, the sensor walk has
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
