#include "support/StoreTesting.h"

#include <unistd.h>

std::unique_ptr<DashboardStore>
makeStoreForTesting(std::shared_ptr<SystemMetricSampler> sampler, double intervalSeconds,
                    std::optional<ProcessTerminationController> terminationController)
{
    if (!sampler)
        sampler = makeFakeSampler(std::make_shared<ProbeCallLog>());
    if (!terminationController) {
        terminationController =
            makeFakeTerminationController(std::make_shared<FakeProcessIdentityReader>(),
                                          std::make_shared<RecordingSignalSender>());
    }
    return std::make_unique<DashboardStore>(LiveSystemMonitor(std::move(sampler), intervalSeconds),
                                            std::move(*terminationController));
}

SystemMetricSample makeSample(double secondsSince1970)
{
    SystemMetricSample sample;
    sample.timestamp = TimePoint::fromSecondsSince1970(secondsSince1970);
    sample.thermalState = SystemThermalState::nominal;
    return sample;
}

SensorReading<double> readingOf(std::optional<double> value)
{
    return value ? SensorReading<double>::available(*value, QStringLiteral("test"))
                 : SensorReading<double>::unsupported(QStringLiteral("none"));
}

SystemMetricSample makeSample(const SampleReadings &readings)
{
    SystemMetricSample sample = makeSample(readings.time);
    sample.thermalState = readings.thermal;
    sample.cpuUsage = readingOf(readings.cpu);
    sample.temperatureCelsius = readingOf(readings.temperature);
    sample.fanRPM = readingOf(readings.fan);
    sample.processMetrics = readings.processes;
    return sample;
}

ProcessMetric makeProcess(pid_t pid, pid_t parentPID, const QString &name, double cpuPercent,
                          double diskBytesPerSecond)
{
    ProcessMetric process;
    process.identity.pid = pid;
    process.identity.startTime = TimePoint::fromSecondsSince1970(1000.0 + pid);
    process.identity.executablePath = QStringLiteral("/usr/bin/") + name;
    process.parentPID = parentPID;
    process.processGroupID = pid;
    process.userID = ::getuid();
    process.name = name;
    process.command.command = name;
    process.cpuPercent = cpuPercent;
    process.residentBytes = 10'000'000;
    process.diskBytesPerSecond = diskBytesPerSecond;
    process.duration = 10.0;
    return process;
}

ApplicationLoad makeLoad(const QString &application, std::vector<ProcessMetric> processes)
{
    ApplicationLoad load;
    load.id = application;
    load.application = application;
    load.processes = std::move(processes);
    if (!load.processes.empty())
        load.target = load.processes.back();
    return load;
}

DashboardTask makeTask(const QString &application, double cpu, TaskKind kind, ResourceImpact energy)
{
    DashboardTask task;
    task.id = QStringLiteral("id-") + application;
    task.application = application;
    task.kind = kind;
    task.detail = application + QStringLiteral(" detail");
    task.cpu = cpu;
    task.energy = energy;
    task.duration = QStringLiteral("3 分钟");
    return task;
}
