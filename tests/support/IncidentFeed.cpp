#include "support/IncidentFeed.h"

#include "support/StoreTesting.h"

IncidentFeed::IncidentFeed() : m_store(makeStoreForTesting()) {}

QUuid IncidentFeed::hot(const QString &processName, double cpu, std::optional<double> temperature,
                        double secondsLater)
{
    m_time += secondsLater;
    SystemMetricSample sample = makeSample(m_time);
    sample.cpuUsage = SensorReading<double>::available(cpu / 4.0, "test");
    if (temperature)
        sample.temperatureCelsius = SensorReading<double>::available(*temperature, "test");
    else
        sample.thermalState = SystemThermalState::fair;
    const pid_t pid = m_nextPID++;
    m_lastProcesses = {makeProcess(pid, 1, processName, cpu)};
    sample.processMetrics = m_lastProcesses;
    m_store->ingest(sample);
    return m_store->incidents().empty() ? QUuid() : m_store->incidents().front().id;
}

void IncidentFeed::calm(double secondsLater)
{
    m_time += secondsLater;
    SystemMetricSample sample = makeSample(m_time);
    sample.cpuUsage = SensorReading<double>::available(5.0, "test");
    sample.temperatureCelsius = SensorReading<double>::available(50.0, "test");
    sample.processMetrics = m_lastProcesses;
    m_store->ingest(sample);
}

void IncidentFeed::addClosedIncidents(int count)
{
    for (int index = 0; index < count; ++index) {
        hot(QStringLiteral("worker%1").arg(index), 40.0 + index % 60, 76.0 + index % 20);
        calm();
    }
}
