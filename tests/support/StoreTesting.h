#pragma once

// Builders shared by the tests: a store over made-up probes, and made-up
// samples, processes, loads and tasks to feed it or the pieces below it.

#include "dashboard/DashboardStore.h"
#include "process/ApplicationLoad.h"
#include "support/FakeProbes.h"
#include "support/FakeTermination.h"

#include <QLocale>

#include <memory>
#include <optional>

// A store whose monitor runs the given sampler (a fake one by default) every
// `intervalSeconds`. Nothing starts until the test calls startMonitoring. The
// termination controller defaults to one over a fake reader that finds no
// process and a sender that only records: no test store signals anything.
std::unique_ptr<DashboardStore>
makeStoreForTesting(std::shared_ptr<SystemMetricSampler> sampler = nullptr,
                    double intervalSeconds = 2.0,
                    std::optional<ProcessTerminationController> terminationController = {});

// A sample at `secondsSince1970` with every reading `warmingUp`, thermal
// state `nominal` and no processes; tests set what they need.
SystemMetricSample makeSample(double secondsSince1970);

// A sample with the readings given available and the others `unsupported`:
// makeSample({.time = 10, .thermal = SystemThermalState::fair, .cpu = 40}).
struct SampleReadings {
    double time = 0.0;
    SystemThermalState thermal = SystemThermalState::nominal;
    std::optional<double> cpu;
    std::optional<double> temperature;
    std::optional<double> fan;
    QList<ProcessMetric> processes;
};
SystemMetricSample makeSample(const SampleReadings &readings);

// `value` available, or `unsupported` when absent.
SensorReading<double> readingOf(std::optional<double> value);

inline TimePoint secondsAt(double secondsSince1970)
{
    return TimePoint::fromSecondsSince1970(secondsSince1970);
}

// A process of the current user: start time 1000 + pid, executable
// "/usr/bin/<name>", command "<name>", 10 MB resident, 10 s old.
ProcessMetric makeProcess(pid_t pid, pid_t parentPID, const QString &name, double cpuPercent = 0.0,
                          double diskBytesPerSecond = 0.0);

// A load named and keyed `application` with its last member as the target,
// as the grouping would give it.
ApplicationLoad makeLoad(const QString &application, std::vector<ProcessMetric> processes);

// A task with id "id-<application>", detail "<application> detail" and a
// duration of "3 分钟".
DashboardTask makeTask(const QString &application, double cpu = 40.0,
                       TaskKind kind = TaskKind::unknown,
                       ResourceImpact energy = ResourceImpact::low);

// Sets the process-wide default locale and puts the previous one back.
class ScopedDefaultLocale {
public:
    explicit ScopedDefaultLocale(const QLocale &locale) { QLocale::setDefault(locale); }
    ~ScopedDefaultLocale() { QLocale::setDefault(m_saved); }
    ScopedDefaultLocale(const ScopedDefaultLocale &) = delete;
    ScopedDefaultLocale &operator=(const ScopedDefaultLocale &) = delete;

private:
    QLocale m_saved;
};
