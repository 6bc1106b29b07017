#include "snapshot/ScriptedStore.h"

#include "termination/ProcessIdentityReading.h"
#include "termination/SignalSending.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <cerrno>
#include <cmath>
#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <unistd.h>

namespace {

// Holds the producer's first tick until the store goes away, so monitoring
// shows as running while no real sample ever arrives.
struct SamplerGate {
    std::mutex mutex;
    std::condition_variable opened;
    bool isOpen = false;

    void wait()
    {
        std::unique_lock lock(mutex);
        opened.wait(lock, [this] { return isOpen; });
    }
    void open()
    {
        {
            std::lock_guard lock(mutex);
            isOpen = true;
        }
        opened.notify_all();
    }
};

class GatedCPUProbe final : public CPUUsageProbing {
public:
    explicit GatedCPUProbe(std::shared_ptr<SamplerGate> gate) : m_gate(std::move(gate)) {}
    SensorReading<double> sample() override
    {
        m_gate->wait();
        return SensorReading<double>::warmingUp();
    }

private:
    std::shared_ptr<SamplerGate> m_gate;
};

struct IdleThermal final : ThermalStateProbing {
    SystemThermalState read() override { return SystemThermalState::unknown; }
};
struct IdleSensors final : AppleSensorProbing {
    AppleSensorReadings read() override { return {}; }
};
struct IdleGPU final : GPUUsageProbing {
    SensorReading<double> sample() override { return {}; }
};
struct IdleDisk final : DiskIOProbing {
    SensorReading<double> sample(TimePoint) override { return {}; }
};
struct IdleMemory final : MemoryUsageProbing {
    SensorReading<SystemMemoryUsage> sample() override { return {}; }
};
struct IdleNetwork final : NetworkIOProbing {
    SensorReading<NetworkThroughput> sample(TimePoint) override { return {}; }
};
struct IdleProcesses final : ProcessMetricsProbing {
    QList<ProcessMetric> sample(TimePoint) override { return {}; }
};

std::shared_ptr<SystemMetricSampler> makeGatedSampler(std::shared_ptr<SamplerGate> gate)
{
    SystemMetricSampler::Probes probes;
    probes.cpuProbe = std::make_unique<GatedCPUProbe>(std::move(gate));
    probes.thermalProbe = std::make_unique<IdleThermal>();
    probes.sensorProbe = std::make_unique<IdleSensors>();
    probes.gpuProbe = std::make_unique<IdleGPU>();
    probes.diskProbe = std::make_unique<IdleDisk>();
    probes.memoryProbe = std::make_unique<IdleMemory>();
    probes.networkProbe = std::make_unique<IdleNetwork>();
    probes.processProbe = std::make_unique<IdleProcesses>();
    return std::make_shared<SystemMetricSampler>(std::move(probes));
}

// What happens to a made-up process when the script ends it.
enum class EndingOutcome { exits, refused };

// The made-up processes as the termination controller sees them: a reading
// per pid while the process "runs", and a signal that either ends it or is
// refused. No signal leaves this class.
class ScriptedProcessTable final : public ProcessIdentityReading, public SignalSending {
public:
    void setRunning(const ProcessTerminationTarget &target, EndingOutcome outcome)
    {
        std::lock_guard lock(m_mutex);
        m_running[target.identity.pid] = {target, outcome};
    }

    std::optional<ProcessTerminationTarget> readIdentity(pid_t pid) override
    {
        std::lock_guard lock(m_mutex);
        const auto found = m_running.find(pid);
        if (found == m_running.end())
            return std::nullopt;
        return found->second.target;
    }

    std::unique_ptr<PinnedProcess> pin(pid_t pid) override;

    int signal(pid_t pid)
    {
        std::lock_guard lock(m_mutex);
        const auto found = m_running.find(pid);
        if (found == m_running.end())
            return ESRCH;
        if (found->second.outcome == EndingOutcome::refused)
            return EPERM;
        m_running.erase(found);
        return 0;
    }

private:
    struct Entry {
        ProcessTerminationTarget target;
        EndingOutcome outcome = EndingOutcome::exits;
    };
    std::mutex m_mutex;
    std::map<pid_t, Entry> m_running;
};

class ScriptedPin final : public PinnedProcess {
public:
    ScriptedPin(ScriptedProcessTable &table, pid_t pid) : m_table(table), m_pid(pid) {}
    int send(ProcessTerminationSignal) override { return m_table.signal(m_pid); }
    // Like a bare pid: the exit check reads the table instead.
    std::optional<bool> isRunning() override { return std::nullopt; }

private:
    ScriptedProcessTable &m_table;
    pid_t m_pid;
};

std::unique_ptr<PinnedProcess> ScriptedProcessTable::pin(pid_t pid)
{
    return std::make_unique<ScriptedPin>(*this, pid);
}

// ---- The script ----------------------------------------------------------

constexpr double kInterval = 2.0;

// What the machine does at one tick of the script.
struct Moment {
    double cpu = 18;
    double temperature = 56;
    double fan = 1900;
    double gpu = 12;
    double diskMegabytes = 3;
    SystemThermalState thermal = SystemThermalState::nominal;
    bool sensorsLost = false; // cpu, temperature and fan unreadable for the tick
    // Per-process CPU percent (100 = one core).
    double testLead = 1, testWorker = 0.5;
    double build = 9;
    double browserRenderer = 3;
    double devServer = 1.5;
};

// A made-up process, and what it does: its CPU percent (100 = one core) is
// the moment's `load` where it has one, else `cpu`; either wobbles a little
// from tick to tick, but for a `steady` one.
struct ScriptedProcess {
    pid_t pid;
    pid_t parent;
    const char *name;
    const char *command;
    const char *project; // nullptr: none
    const char *applicationPath;
    const char *applicationName;
    double startedMinutesBeforeEnd;
    double residentMegabytes;
    double Moment::*load = nullptr;
    double cpu = 0.0;
    bool steady = false;
};

constexpr const char *kChromium = "/usr/share/applications/chromium.desktop";
constexpr const char *kCode = "/usr/share/applications/code.desktop";
constexpr double Moment::*kLead = &Moment::testLead;
constexpr double Moment::*kWorker = &Moment::testWorker;
constexpr double Moment::*kBuild = &Moment::build;

// Lineages: a test run in a terminal, a compiler build in another, a browser,
// an editor, and a development server.

// clang-format off
const ScriptedProcess kProcesses[] = {
    {4100, 900, "bash", "bash", "kiln-api", nullptr, nullptr, 95, 6},
    {4120, 4100, "pytest", "python3 -m pytest", "kiln-api", nullptr, nullptr, 24, 310, kLead},
    {4121, 4120, "python3", "python3 -m pytest", "kiln-api", nullptr, nullptr, 24, 180, kWorker},
    {4122, 4120, "python3", "python3 -m pytest", "kiln-api", nullptr, nullptr, 24, 176, kWorker},
    {4123, 4120, "python3", "python3 -m pytest", "kiln-api", nullptr, nullptr, 24, 171, kWorker},
    {4124, 4120, "python3", "python3 -m pytest", "kiln-api", nullptr, nullptr, 24, 169, kWorker},
    {5200, 900, "bash", "bash", "thermal-engine", nullptr, nullptr, 120, 6},
    {5210, 5200, "ninja", "ninja -C build", "thermal-engine", nullptr, nullptr, 34, 48, {}, 0.4,
     true},
    {5221, 5210, "clang++", "clang++", "thermal-engine", nullptr, nullptr, 29, 420, kBuild},
    {5222, 5210, "clang++", "clang++", "thermal-engine", nullptr, nullptr, 29, 388, kBuild},
    {5223, 5210, "clang++", "clang++", "thermal-engine", nullptr, nullptr, 29, 402, kBuild},
    {5224, 5210, "clang++", "clang++", "thermal-engine", nullptr, nullptr, 29, 395, kBuild},
    {3000, 900, "chromium", "chromium", nullptr, kChromium, "Chromium", 180, 520, {}, 3.1},
    {3010, 3000, "chromium", "chromium --type=renderer", nullptr, kChromium, "Chromium", 180, 240,
     {}, 2.2},
    {3011, 3000, "chromium", "chromium --type=renderer", nullptr, kChromium, "Chromium", 150, 310,
     {}, 2.2},
    {3012, 3000, "chromium", "chromium --type=renderer", nullptr, kChromium, "Chromium", 90, 460,
     &Moment::browserRenderer},
    {3020, 3000, "chromium", "chromium --type=gpu-process", nullptr, kChromium, "Chromium", 180,
     150, {}, 4.5},
    {3500, 900, "code", "code", nullptr, kCode, "Visual Studio Code", 200, 610, {}, 1.2},
    {3510, 3500, "code", "code --type=utility", nullptr, kCode, "Visual Studio Code", 200, 380, {},
     2.8},
    {6100, 900, "bash", "bash", "dashboard-web", nullptr, nullptr, 160, 6},
    {6110, 6100, "node", "node vite", "dashboard-web", nullptr, nullptr, 150, 140,
     &Moment::devServer},
};
// clang-format on

double wave(int tick, double period, double amplitude)
{
    return amplitude * std::sin(tick * 2.0 * M_PI / period);
}

Moment momentAt(int tick)
{
    Moment m;
    m.cpu = 19 + wave(tick, 37, 4) + wave(tick, 11, 2);
    m.temperature = 55 + wave(tick, 53, 2.5);
    m.fan = 1900 + wave(tick, 41, 120);
    m.gpu = 14 + wave(tick, 29, 5);
    m.diskMegabytes = 2.5 + std::max(0.0, wave(tick, 23, 9));
    m.build = 8 + wave(tick, 13, 2);
    m.browserRenderer = 3 + std::max(0.0, wave(tick, 17, 2));
    auto hot = [&](double cpu, double temperature, double fan) {
        m.cpu = cpu + wave(tick, 7, 3);
        m.temperature = temperature + wave(tick, 9, 0.8);
        m.fan = fan + wave(tick, 13, 150);
    };
    if (tick >= 100 && tick < 130) { // a hot spell that passes by itself
        hot(62, 79, 3600);
        m.build = 30;
    } else if (tick >= 220 && tick < 241) { // the dev server spins; ending it is refused
        hot(66, 81, 3800);
        m.devServer = 92;
    } else if (tick >= 320 && tick < 395) { // a test run, ended; the machine cools
        hot(tick <= 330 ? 90 : 46, tick <= 330 ? 88 : 77.5, tick <= 330 ? 4400 : 3500);
        m.testLead = tick <= 330 ? 96 : 64;
        m.testWorker = tick <= 330 ? 88 : 20;
        m.thermal = tick <= 330 ? SystemThermalState::fair : SystemThermalState::nominal;
    } else if (tick >= 450 && tick < 525) { // a renderer, ended; no change
        hot(72, 82, 3900);
        m.browserRenderer = 78;
    } else if (tick >= 580 && tick < 665) { // a build under pressure; the sensors drop out
        hot(58, 77, 3700);
        m.thermal = SystemThermalState::fair;
        m.build = 42;
        m.sensorsLost = tick >= 640 && tick < 660;
        m.diskMegabytes = 28 + wave(tick, 5, 6);
    } else if (tick >= 790) { // now: the test run heats the machine again
        const double ramp = std::min(1.0, (tick - 790) / 12.0);
        hot(24 + ramp * 60, 58 + ramp * 28, 2000 + ramp * 2500);
        m.testLead = 4 + ramp * 94;
        m.testWorker = 1 + ramp * 71;
        m.thermal = ramp >= 1.0 ? SystemThermalState::fair : SystemThermalState::nominal;
        m.gpu = 22 + wave(tick, 29, 6);
    }
    return m;
}

double processCPU(const ScriptedProcess &process, const Moment &m, int tick)
{
    const double cpu = process.load ? m.*process.load : process.cpu;
    return process.steady ? cpu : cpu * (1.0 + 0.04 * std::sin(tick * 0.7 + process.pid));
}

TimePoint tickTime(int tick)
{
    return TimePoint::fromSecondsSince1970(ScriptedStore::endTime -
                                           (ScriptedStore::sampleCount - 1 - tick) * kInterval);
}

ProcessMetric metricOf(const ScriptedProcess &process, const Moment &m, int tick)
{
    ProcessMetric metric;
    const TimePoint now = tickTime(tick);
    metric.identity.pid = process.pid;
    metric.identity.startTime = TimePoint::fromSecondsSince1970(
        ScriptedStore::endTime - process.startedMinutesBeforeEnd * 60);
    metric.identity.executablePath = QStringLiteral("/usr/bin/") + QLatin1String(process.name);
    metric.parentPID = process.parent;
    metric.processGroupID = process.parent == 900 ? process.pid : process.parent;
    metric.userID = ::getuid();
    metric.name = QLatin1String(process.name);
    if (process.applicationPath)
        metric.applicationPath = QLatin1String(process.applicationPath);
    if (process.applicationName)
        metric.applicationName = QLatin1String(process.applicationName);
    metric.command.command = QLatin1String(process.command);
    if (process.project)
        metric.command.project = QLatin1String(process.project);
    metric.cpuPercent = processCPU(process, m, tick);
    metric.residentBytes = static_cast<std::uint64_t>(process.residentMegabytes * 1'000'000);
    const bool building = process.pid >= 5221 && process.pid <= 5224;
    metric.diskBytesPerSecond = building ? m.diskMegabytes * 180'000 : 0.0;
    metric.duration = std::max(0.0, now.secondsSince(metric.identity.startTime));
    return metric;
}

// Processes that appear only later in the script start then.
bool isRunningAt(const ScriptedProcess &process, int tick)
{
    const double started = ScriptedStore::endTime - process.startedMinutesBeforeEnd * 60 -
                           tickTime(tick).secondsSince1970;
    return started <= 0.0;
}

SystemMetricSample sampleAt(int tick, const std::set<pid_t> &ended)
{
    const Moment m = momentAt(tick);
    SystemMetricSample sample;
    sample.timestamp = tickTime(tick);
    sample.thermalState = m.thermal;
    if (tick == 0) {
        // Rates need two readings: the first tick warms up.
        sample.cpuUsage = SensorReading<double>::warmingUp();
        sample.diskBytesPerSecond = SensorReading<double>::warmingUp();
        sample.networkThroughput = SensorReading<NetworkThroughput>::warmingUp();
    } else {
        sample.cpuUsage =
            m.sensorsLost
                ? SensorReading<double>::temporarilyUnavailable(
                      QCoreApplication::translate("ProcStatCPUUsageProbe", "/proc/stat 读取失败"))
                : SensorReading<double>::available(std::clamp(m.cpu, 0.0, 100.0),
                                                   QStringLiteral("Linux /proc/stat CPU ticks"));
        sample.diskBytesPerSecond = SensorReading<double>::available(
            m.diskMegabytes * 1'000'000, QStringLiteral("Linux /proc/diskstats"));
        sample.networkThroughput = SensorReading<NetworkThroughput>::available(
            {1'250'000 + wave(tick, 19, 400'000), 240'000 + wave(tick, 31, 60'000)},
            QStringLiteral("getifaddrs"));
    }
    sample.temperatureCelsius =
        m.sensorsLost
            ? SensorReading<double>::unsupported(
                  QCoreApplication::translate("HwmonSensorProbe", "未发现可识别的 CPU 温度通道"))
            : SensorReading<double>::available(
                  m.temperature,
                  QCoreApplication::translate("HwmonSensorProbe", "Linux hwmon CPU 传感器"));
    sample.fanRPM =
        m.sensorsLost
            ? SensorReading<double>::unsupported(
                  QCoreApplication::translate("HwmonSensorProbe", "hwmon 未返回明确的风扇 RPM"))
            : SensorReading<double>::available(
                  m.fan, QCoreApplication::translate("HwmonSensorProbe", "Linux hwmon 风扇传感器"));
    sample.gpuUsage = SensorReading<double>::available(std::clamp(m.gpu, 0.0, 100.0),
                                                       QStringLiteral("Linux GPU busy percent"));
    sample.memoryUsage = SensorReading<SystemMemoryUsage>::available(
        {static_cast<std::uint64_t>((10.4 + wave(tick, 97, 0.6)) * 1e9), 16'000'000'000ULL},
        QStringLiteral("Linux /proc/meminfo"));
    for (const ScriptedProcess &process : kProcesses) {
        if (!ended.contains(process.pid) && isRunningAt(process, tick))
            sample.processMetrics.append(metricOf(process, m, tick));
    }
    return sample;
}

} // namespace

struct ScriptedStore::Machine {
    std::shared_ptr<SamplerGate> gate = std::make_shared<SamplerGate>();
    std::shared_ptr<ScriptedProcessTable> processes = std::make_shared<ScriptedProcessTable>();
    std::set<pid_t> ended;

    // Ends `pid` the way a user would: select, ask, confirm; then waits for
    // the controller's exit check to come back through the event loop.
    void end(DashboardStore &store, pid_t pid, EndingOutcome outcome)
    {
        for (const DashboardTask &task : store.allTasks()) {
            for (const DashboardProcessNode &root : task.processTree) {
                const DashboardProcessNode *node = root.nodeWithPID(pid);
                if (!node)
                    continue;
                store.selectTask(task.id);
                store.selectProcess(node->id);
                store.requestTermination(task, *node);
                if (!store.pendingTerminationTarget())
                    return;
                processes->setRunning(*store.pendingTerminationTarget(), outcome);
                store.confirmTermination();
                QDeadlineTimer deadline(5000);
                while (store.terminationStatus() &&
                       store.terminationStatus()->phase == DashboardTerminationPhase::verifying &&
                       !deadline.hasExpired())
                    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
                if (outcome == EndingOutcome::exits)
                    ended.insert(pid);
                return;
            }
        }
    }
};

ScriptedStore::ScriptedStore() : m_machine(std::make_shared<Machine>())
{
    ProcessTerminationController controller(m_machine->processes, m_machine->processes, ::getuid(),
                                            ::getpid(), {0.001, 0.001});
    m_store = std::make_unique<DashboardStore>(
        LiveSystemMonitor(makeGatedSampler(m_machine->gate), kInterval), std::move(controller));

    const std::map<int, std::pair<pid_t, EndingOutcome>> endings = {
        {230, {6110, EndingOutcome::refused}}, // the dev server: not permitted
        {330, {4123, EndingOutcome::exits}},   // a test worker: the machine cools
        {460, {3012, EndingOutcome::exits}},   // a renderer: nothing changes
        {590, {5224, EndingOutcome::exits}},   // a compiler: the sensors drop out
        {866, {4124, EndingOutcome::exits}},   // a test worker, a minute ago
    };
    for (int tick = 0; tick < sampleCount; ++tick) {
        m_store->ingest(sampleAt(tick, m_machine->ended));
        if (const auto ending = endings.find(tick); ending != endings.end())
            m_machine->end(*m_store, ending->second.first, ending->second.second);
    }
    // The user looks at the hottest source, its main process selected.
    if (!m_store->allTasks().empty())
        m_store->selectTask(m_store->allTasks().front().id);
    m_store->startMonitoring();
}

ScriptedStore::~ScriptedStore()
{
    m_store->stopMonitoring();
    m_machine->gate->open();
    m_store.reset();
}

struct EmptyScriptedStore::Gate {
    std::shared_ptr<SamplerGate> gate = std::make_shared<SamplerGate>();
};

EmptyScriptedStore::EmptyScriptedStore() : m_gate(std::make_shared<Gate>())
{
    auto processes = std::make_shared<ScriptedProcessTable>();
    ProcessTerminationController controller(processes, processes, ::getuid(), ::getpid());
    m_store = std::make_unique<DashboardStore>(
        LiveSystemMonitor(makeGatedSampler(m_gate->gate), kInterval), std::move(controller));
    m_store->startMonitoring();
}

EmptyScriptedStore::~EmptyScriptedStore()
{
    m_store->stopMonitoring();
    m_gate->gate->open();
    m_store.reset();
}
