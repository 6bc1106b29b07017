#include "presentation/report/ReportJson.h"

#include "presentation/report/ReportTasks.h"

#include <QJsonArray>

namespace {

QJsonValue readingValueJson(double value)
{
    return value;
}

QJsonValue readingValueJson(const SystemMemoryUsage &memory)
{
    return QJsonObject{{QStringLiteral("usedBytes"), qint64(memory.usedBytes)},
                       {QStringLiteral("totalBytes"), qint64(memory.totalBytes)}};
}

QJsonValue readingValueJson(const NetworkThroughput &network)
{
    return QJsonObject{{QStringLiteral("receivedBytesPerSecond"), network.receivedBytesPerSecond},
                       {QStringLiteral("sentBytesPerSecond"), network.sentBytesPerSecond}};
}

template <typename Value> QJsonObject readingJson(const SensorReading<Value> &reading)
{
    QJsonObject object{{QStringLiteral("case"), sensorReadingCaseName(reading.readingCase())}};
    if (reading.isAvailable()) {
        object.insert(QStringLiteral("value"), readingValueJson(*reading.value()));
        object.insert(QStringLiteral("source"), reading.sourceText());
    } else if (const auto reason = reading.reasonText()) {
        object.insert(QStringLiteral("reason"), *reason);
    }
    return object;
}

QJsonArray sensorStatusesJson(const DashboardStore &store)
{
    QJsonArray rows;
    for (const DashboardSensorStatus &status : store.sensorStatuses())
        rows.append(QJsonObject{
            {QStringLiteral("id"), status.id},
            {QStringLiteral("title"), status.title},
            {QStringLiteral("symbolName"), status.symbolName},
            {QStringLiteral("source"), status.source},
            {QStringLiteral("currentValue"), status.currentValue},
            {QStringLiteral("availability"), sensorAvailabilityName(status.availability)}});
    return rows;
}

} // namespace

QJsonValue optionalJson(const std::optional<QString> &text)
{
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

QJsonValue optionalJson(const std::optional<double> &number)
{
    return number ? QJsonValue(*number) : QJsonValue(QJsonValue::Null);
}

QJsonValue timePointJson(TimePoint time)
{
    return time.secondsSince1970;
}

QJsonObject processMetricJson(const ProcessMetric &process)
{
    const QJsonObject identity{
        {QStringLiteral("pid"), qint64(process.identity.pid)},
        {QStringLiteral("startTime"), timePointJson(process.identity.startTime)},
        {QStringLiteral("executablePath"), process.identity.executablePath}};
    const QJsonObject command{{QStringLiteral("command"), process.command.command},
                              {QStringLiteral("project"), optionalJson(process.command.project)}};
    return QJsonObject{{QStringLiteral("identity"), identity},
                       {QStringLiteral("parentPID"), qint64(process.parentPID)},
                       {QStringLiteral("processGroupID"), qint64(process.processGroupID)},
                       {QStringLiteral("userID"), qint64(process.userID)},
                       {QStringLiteral("name"), process.name},
                       {QStringLiteral("isServiceManager"), process.isServiceManager},
                       {QStringLiteral("leadsTerminalSession"), process.leadsTerminalSession},
                       {QStringLiteral("applicationPath"), optionalJson(process.applicationPath)},
                       {QStringLiteral("applicationName"), process.applicationName},
                       {QStringLiteral("controlGroup"), process.controlGroup},
                       {QStringLiteral("command"), command},
                       {QStringLiteral("cpuPercent"), process.cpuPercent},
                       {QStringLiteral("residentBytes"), qint64(process.residentBytes)},
                       {QStringLiteral("diskBytesPerSecond"), process.diskBytesPerSecond},
                       {QStringLiteral("duration"), process.duration}};
}

QJsonObject sampleJson(const SystemMetricSample &sample)
{
    QJsonArray processes;
    for (const ProcessMetric &process : sample.processMetrics)
        processes.append(processMetricJson(process));
    return QJsonObject{
        {QStringLiteral("timestamp"), timePointJson(sample.timestamp)},
        {QStringLiteral("cpuUsage"), readingJson(sample.cpuUsage)},
        {QStringLiteral("thermalState"), systemThermalStateRawText(sample.thermalState)},
        {QStringLiteral("temperatureCelsius"), readingJson(sample.temperatureCelsius)},
        {QStringLiteral("fanRPM"), readingJson(sample.fanRPM)},
        {QStringLiteral("gpuUsage"), readingJson(sample.gpuUsage)},
        {QStringLiteral("diskBytesPerSecond"), readingJson(sample.diskBytesPerSecond)},
        {QStringLiteral("memoryUsage"), readingJson(sample.memoryUsage)},
        {QStringLiteral("networkThroughput"), readingJson(sample.networkThroughput)},
        {QStringLiteral("processMetrics"), processes}};
}

namespace {

QJsonValue optionalTimeJson(const std::optional<TimePoint> &time)
{
    return time ? timePointJson(*time) : QJsonValue(QJsonValue::Null);
}

QJsonObject menuBarMetricJson(const MenuBarPresentationMetric &metric)
{
    return QJsonObject{
        {QStringLiteral("id"), metric.id},
        {QStringLiteral("title"), metric.title},
        {QStringLiteral("value"), metric.value},
        {QStringLiteral("accessibilityValue"), optionalJson(metric.accessibilityValue)}};
}

} // namespace

QJsonObject menuBarPresentationJson(const MenuBarPresentation &presentation)
{
    QJsonValue primaryTask(QJsonValue::Null);
    if (const auto &task = presentation.primaryTask) {
        primaryTask = QJsonObject{{QStringLiteral("application"), task->application},
                                  {QStringLiteral("cpuText"), task->cpuText},
                                  {QStringLiteral("runningDuration"), task->runningDuration}};
    }
    return QJsonObject{
        {QStringLiteral("state"), menuBarPresentationStateName(presentation.state)},
        {QStringLiteral("menuTitle"), presentation.menuTitle},
        {QStringLiteral("headline"), presentation.headline},
        {QStringLiteral("durationText"), optionalJson(presentation.durationText)},
        {QStringLiteral("symbolName"), presentation.symbolName},
        {QStringLiteral("cpu"), menuBarMetricJson(presentation.cpu)},
        {QStringLiteral("temperature"), menuBarMetricJson(presentation.temperature)},
        {QStringLiteral("fan"), menuBarMetricJson(presentation.fan)},
        {QStringLiteral("statusMessage"), optionalJson(presentation.statusMessage)},
        {QStringLiteral("primaryTask"), primaryTask},
        {QStringLiteral("remainingAttentionTaskCount"), presentation.remainingAttentionTaskCount}};
}

QJsonObject incidentJson(const DashboardIncident &incident)
{
    QJsonArray points;
    for (const DashboardIncidentPoint &point : incident.points) {
        points.append(QJsonObject{{QStringLiteral("timestamp"), timePointJson(point.timestamp)},
                                  {QStringLiteral("cpu"), optionalJson(point.cpu)},
                                  {QStringLiteral("temperature"), optionalJson(point.temperature)},
                                  {QStringLiteral("fanRPM"), optionalJson(point.fanRPM)}});
    }
    return QJsonObject{{QStringLiteral("id"), incident.id.toString(QUuid::WithoutBraces)},
                       {QStringLiteral("startedAt"), timePointJson(incident.startedAt)},
                       {QStringLiteral("endedAt"), optionalTimeJson(incident.endedAt)},
                       {QStringLiteral("application"), incident.application},
                       {QStringLiteral("detail"), incident.detail},
                       {QStringLiteral("peakCPU"), incident.peakCPU},
                       {QStringLiteral("peakTemperature"), optionalJson(incident.peakTemperature)},
                       {QStringLiteral("status"), dashboardIncidentStatusName(incident.status)},
                       {QStringLiteral("action"), optionalJson(incident.action)},
                       {QStringLiteral("actionAt"), optionalTimeJson(incident.actionAt)},
                       {QStringLiteral("points"), points}};
}

QJsonObject reportJson(const DashboardStore &store, const std::vector<SystemMetricSample> &samples)
{
    QJsonArray sampleArray;
    for (const SystemMetricSample &sample : samples)
        sampleArray.append(sampleJson(sample));
    // The samples, then what the dashboard derived from the last of them.
    QJsonObject report{{QStringLiteral("samples"), sampleArray}};
    report.insert(QStringLiteral("sensorStatuses"), sensorStatusesJson(store));
    addLoadSourcesJson(report, store);
    report.insert(QStringLiteral("menuBar"), menuBarPresentationJson(store.menuBarPresentation()));
    QJsonArray incidents;
    for (const DashboardIncident &incident : store.incidents())
        incidents.append(incidentJson(incident));
    report.insert(QStringLiteral("incidents"), incidents);
    return report;
}
