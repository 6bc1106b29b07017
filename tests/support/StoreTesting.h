#pragma once

// Builders shared by the dashboard tests: a store over made-up probes, and
// made-up samples and processes to feed it through `ingest`.

#include "dashboard/DashboardStore.h"
#include "support/FakeProbes.h"
#include "support/FakeTermination.h"

#include <memory>

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

// A process of the current user: start time 1000 + pid, executable
// "/usr/bin/<name>", command "<name>", 10 MB resident, 10 s old.
ProcessMetric makeProcess(pid_t pid, pid_t parentPID, const QString &name, double cpuPercent = 0.0,
                          double diskBytesPerSecond = 0.0);
