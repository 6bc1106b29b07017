#pragma once

// Drives a test store through real incidents: hot samples blamed on a made-up
// process open one, a calm sample closes it. Used by the window's tests to
// build any incident log, from none to a thousand, through `ingest`.

#include "dashboard/DashboardStore.h"

#include <memory>
#include <optional>

class IncidentFeed {
public:
    IncidentFeed();

    DashboardStore &store() { return *m_store; }

    // A hot sample with `processName` at `cpu` as the only busy process: opens
    // an incident (or extends the open one). Without a temperature the
    // kernel's pressure makes it hot. Returns the open incident's id.
    QUuid hot(const QString &processName, double cpu, std::optional<double> temperature,
              double secondsLater = 2.0);
    // A calm sample: the open incident closes as recovered without action.
    void calm(double secondsLater = 2.0);
    // One closed incident per call, each its own process.
    void addClosedIncidents(int count);

private:
    std::unique_ptr<DashboardStore> m_store;
    double m_time = 1000.0;
    QList<ProcessMetric> m_lastProcesses;
    int m_nextPID = 5000;
};
