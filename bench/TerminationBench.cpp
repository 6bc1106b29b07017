// The cost of one identity reading, which a termination pays once for the
// safety check and up to six times while it checks for the exit.

#include "platform/PlatformFactory.h"
#include "platform/linux/ProcfsProcessIdentityReader.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

namespace {

void BM_ReadIdentityOfThisProcess(benchmark::State &state)
{
    ProcfsProcessIdentityReader reader;
    const pid_t self = ::getpid();
    for (auto _ : state)
        benchmark::DoNotOptimize(reader.readIdentity(self));
}
BENCHMARK(BM_ReadIdentityOfThisProcess)->Unit(benchmark::kMicrosecond);

// One exit check: a reading and the comparison with the target.
void BM_ExitCheckOfThisProcess(benchmark::State &state)
{
    const ProcessTerminationController controller = makeProcessTerminationController();
    ProcfsProcessIdentityReader reader;
    const std::optional<ProcessTerminationTarget> self = reader.readIdentity(::getpid());
    if (!self) {
        state.SkipWithError("this process cannot be read");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(controller.isRunning(*self));
}
BENCHMARK(BM_ExitCheckOfThisProcess)->Unit(benchmark::kMicrosecond);

} // namespace
