#include "presentation/report/ReportJson.h"

#include "presentation/report/ReportTasks.h"
#include "process/PrintableText.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

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

QJsonObject reportStateJson(const DashboardStore &store)
{
    QJsonObject report{{QStringLiteral("sensorStatuses"), sensorStatusesJson(store)}};
    addLoadSourcesJson(report, store);
    report.insert(QStringLiteral("menuBar"), menuBarPresentationJson(store.menuBarPresentation()));
    QJsonArray incidents;
    for (const DashboardIncident &incident : store.incidents())
        incidents.append(incidentJson(incident));
    report.insert(QStringLiteral("incidents"), incidents);
    return report;
}

QByteArray compactJson(const QJsonObject &object)
{
    // The writer escapes C0 controls only. DEL, C1 controls, the separators
    // and the direction marks a process may carry in its name are written as
    // \u escapes too, so that the output never moves a terminal's cursor or
    // reverses its text. They can only stand inside a string, where an
    // escape means the same character.
    const QByteArray bytes = QJsonDocument(object).toJson(QJsonDocument::Compact);
    const QString text = QString::fromUtf8(bytes);
    if (std::none_of(text.cbegin(), text.cend(), isForgingCharacter))
        return bytes;
    QString escaped;
    escaped.reserve(text.size() + 16);
    for (const QChar character : text) {
        if (isForgingCharacter(character))
            escaped +=
                QStringLiteral("\\u%1").arg(uint(character.unicode()), 4, 16, QLatin1Char('0'));
        else
            escaped += character;
    }
    return escaped.toUtf8();
}

ReportJsonStream::ReportJsonStream(std::FILE *output) : m_output(output) {}

void ReportJsonStream::addSample(const SystemMetricSample &sample)
{
    write(m_sampleCount == 0 ? "{\"samples\":[" : ",");
    write(compactJson(sampleJson(sample)));
    ++m_sampleCount;
}

void ReportJsonStream::finish(const DashboardStore &store)
{
    if (m_sampleCount == 0)
        write("{\"samples\":[");
    // The state's members follow the array, in the object the samples opened.
    const QByteArray state = compactJson(reportStateJson(store));
    write("],");
    write(state.sliced(1));
    write("\n");
}

void ReportJsonStream::write(QByteArrayView bytes)
{
    std::fwrite(bytes.data(), 1, static_cast<std::size_t>(bytes.size()), m_output);
}
