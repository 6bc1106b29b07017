// What one tick costs the machine it watches, with a desktop's worth of
// processes: the process probe, the whole sampler tick and the store's ingest,
// against ps reading the same population. The population is this benchmark's
// own sleeping children on top of whatever the machine runs.

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"
#include "platform/linux/ProcfsProcessMetricReader.h"
#include "process/ProcessMetricsProbe.h"

#include <benchmark/benchmark.h>

#include <cerrno>
#include <ctime>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace {

// `count` children of this benchmark, each `sleep 3600`, killed and reaped at
// the end. Each is started only once its exec has happened, so both readers
// see real sleep processes and not copies of the benchmark.
class SleepingChildren {
public:
    explicit SleepingChildren(int count)
    {
        const pid_t parent = ::getpid();
        for (int i = 0; i < count; ++i) {
            int execPipe[2];
            if (::pipe2(execPipe, O_CLOEXEC) != 0)
                break;
            const pid_t pid = ::fork();
            if (pid == 0) {
                ::prctl(PR_SET_PDEATHSIG, SIGKILL);
                if (::getppid() == parent)
                    ::execl("/bin/sleep", "sleep", "3600", static_cast<char *>(nullptr));
                ::_exit(127);
            }
            ::close(execPipe[1]);
            char byte;
            while (::read(execPipe[0], &byte, 1) < 0 && errno == EINTR) {
            }
            ::close(execPipe[0]);
            if (pid < 0)
                break;
            m_pids.push_back(pid);
        }
    }
    ~SleepingChildren()
    {
        for (const pid_t pid : m_pids)
            ::kill(pid, SIGKILL);
        for (const pid_t pid : m_pids) {
            while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
            }
        }
    }
    SleepingChildren(const SleepingChildren &) = delete;
    SleepingChildren &operator=(const SleepingChildren &) = delete;

    std::size_t size() const { return m_pids.size(); }

private:
    std::vector<pid_t> m_pids;
};

double threadCpuSeconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

double childrenCpuSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return double(usage.ru_utime.tv_sec) + double(usage.ru_utime.tv_usec) * 1e-6 +
           double(usage.ru_stime.tv_sec) + double(usage.ru_stime.tv_usec) * 1e-6;
}

// CPU seconds (user + system) of one `ps -e -o ...` run, output discarded;
// nothing when ps cannot be run.
std::optional<double> psCpuSeconds()
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    char *argv[] = {const_cast<char *>("ps"), const_cast<char *>("-e"), const_cast<char *>("-o"),
                    const_cast<char *>("pid,ppid,pgid,uid,comm,rss,time,args"), nullptr};
    const double before = childrenCpuSeconds();
    pid_t pid = -1;
    const int spawned = ::posix_spawnp(&pid, "ps", &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return std::nullopt;
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    return childrenCpuSeconds() - before;
}

// The sleeping children start before anything else, so that every reader
// sees the same population from its first tick. Process probe and sampler
// are separate objects, each with its own warm first tick.
constexpr int kChildren = 500;

// One tick of the process probe alone, one whole sampler tick (every probe,
// the process probe included) and one ingest of that tick's sample by the
// store, over every process of the current user with 500 sleeping children of
// this benchmark added; and ps reading the same population. CPU time of this
// thread per tick, in milliseconds.
void BM_TickWith500SleepingChildren(benchmark::State &state)
{
    const SleepingChildren children(kChildren);
    if (children.size() != std::size_t(kChildren)) {
        state.SkipWithError("could not start the sleeping children");
        return;
    }
    ProcessMetricsProbe probe(std::make_unique<ProcfsProcessMetricReader>());
    const auto sampler = makeSystemMetricSampler();
    DashboardStore store(LiveSystemMonitor(sampler, 2.0), makeProcessTerminationController());
    double seconds = 1.7e9;
    probe.sample(TimePoint::fromSecondsSince1970(seconds)); // first ticks fill the caches
    store.ingest(sampler->sample(TimePoint::fromSecondsSince1970(seconds)));

    qsizetype processes = 0;
    double probeCpu = 0.0;
    double samplerCpu = 0.0;
    double ingestCpu = 0.0;
    for (auto _ : state) {
        seconds += 2.0;
        const TimePoint now = TimePoint::fromSecondsSince1970(seconds);
        double start = threadCpuSeconds();
        const QList<ProcessMetric> metrics = probe.sample(now);
        double end = threadCpuSeconds();
        probeCpu += end - start;
        processes = metrics.size();

        start = end;
        const SystemMetricSample sample = sampler->sample(now);
        end = threadCpuSeconds();
        samplerCpu += end - start;

        start = end;
        store.ingest(sample);
        ingestCpu += threadCpuSeconds() - start;
    }

    // After the loop the timer has stopped: ps runs outside the measured time.
    constexpr int psRuns = 10;
    double psCpu = 0.0;
    for (int run = 0; run < psRuns; ++run) {
        const auto cpu = psCpuSeconds();
        if (!cpu) {
            state.SkipWithError("ps could not be run");
            return;
        }
        psCpu += *cpu;
    }

    const double ticks = double(state.iterations());
    const double probeMs = probeCpu * 1e3 / ticks;
    const double psMs = psCpu * 1e3 / psRuns;
    state.counters["processes"] = double(processes);
    state.counters["tasks"] = double(store.allTasks().size());
    state.counters["probe_cpu_ms"] = probeMs;
    state.counters["sampler_cpu_ms"] = samplerCpu * 1e3 / ticks;
    state.counters["ingest_cpu_ms"] = ingestCpu * 1e3 / ticks;
    state.counters["ps_cpu_ms"] = psMs;
    state.counters["probe_per_ps"] = psMs > 0.0 ? probeMs / psMs : 0.0;
}
BENCHMARK(BM_TickWith500SleepingChildren)->Unit(benchmark::kMillisecond);

} // namespace
