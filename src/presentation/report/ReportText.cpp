#include "presentation/report/ReportText.h"

#include "presentation/report/ReportTasks.h"
#include "presentation/report/TextTable.h"
#include "process/LoadTextFormats.h"
#include "process/PrintableText.h"
#include "sampling/Text.h"
#include "sampling/UnitText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ReportText)
};

QString sourceOrReason(const auto &reading)
{
    return reading.reasonText().value_or(reading.sourceText());
}

QString readingsSection(const SystemMetricSample &sample)
{
    TextTable table({Words::tr("读数"), Words::tr("当前值"), Words::tr("来源或原因")});
    auto addNumber = [&](const QString &title, const SensorReading<double> &reading,
                         DisplayUnit unit) {
        table.addRow({title, readingText(reading, unit), sourceOrReason(reading)});
    };
    addNumber(Words::tr("CPU 使用率"), sample.cpuUsage, DisplayUnit::percent);
    table.addRow({Words::tr("热状态"), systemThermalStateLabel(sample.thermalState),
                  systemThermalStateRawText(sample.thermalState)});
    addNumber(Words::tr("温度"), sample.temperatureCelsius, DisplayUnit::celsius);
    addNumber(Words::tr("风扇"), sample.fanRPM, DisplayUnit::rpm);
    addNumber(Words::tr("GPU"), sample.gpuUsage, DisplayUnit::percent);
    table.addRow({Words::tr("磁盘"), rateReadingText(sample.diskBytesPerSecond),
                  sourceOrReason(sample.diskBytesPerSecond)});
    table.addRow({Words::tr("内存"), memoryReadingText(sample.memoryUsage),
                  sourceOrReason(sample.memoryUsage)});
    {
        const auto &network = sample.networkThroughput;
        const QString value = network.isAvailable()
                                  ? QStringLiteral("↓ %1  ↑ %2")
                                        .arg(rateText(network.value()->receivedBytesPerSecond),
                                             rateText(network.value()->sentBytesPerSecond))
                                  : network.statusText();
        table.addRow({Words::tr("网络"), value, sourceOrReason(network)});
    }
    // The count of processes, where the busiest table's column names one.
    table.addRow(
        {Words::tr("进程", "count"), formatLocaleInteger(sample.processMetrics.size()), QString()});
    return table.render();
}

// The menu bar as one line: the item's title, then what its panel says.
QString menuBarLine(const MenuBarPresentation &menuBar)
{
    const QString separator = QStringLiteral(" · ");
    QStringList parts = {menuBar.headline};
    if (menuBar.durationText)
        parts << *menuBar.durationText;
    for (const MenuBarPresentationMetric *metric :
         {&menuBar.cpu, &menuBar.temperature, &menuBar.fan})
        parts << metric->title + QLatin1Char(' ') + metric->value;
    if (const auto &task = menuBar.primaryTask) {
        QString named = Words::tr("主要任务 %1 %2（%3）")
                            .arg(task->application, task->cpuText, task->runningDuration);
        if (menuBar.remainingAttentionTaskCount > 0) {
            named += separator + Words::tr("另有 %1 个任务需要关注")
                                     .arg(formatLocaleInteger(menuBar.remainingAttentionTaskCount));
        }
        parts << named;
    }
    return Words::tr("菜单栏：%1；面板：%2").arg(menuBar.menuTitle, parts.join(separator)) +
           QLatin1Char('\n');
}

QString clockText(TimePoint time)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(time.secondsSince1970 * 1000.0))
        .toString(QStringLiteral("HH:mm:ss"));
}

QString incidentsSection(const std::vector<DashboardIncident> &incidents)
{
    if (incidents.empty())
        return Words::tr("本次运行没有升温事件。") + QLatin1Char('\n');
    TextTable table({Words::tr("开始"), Words::tr("结束"), Words::tr("来源"), Words::tr("状态"),
                     Words::tr("峰值 CPU"), Words::tr("峰值温度"), Words::tr("处理"),
                     Words::tr("点数")});
    const QString none = QStringLiteral("—");
    for (const DashboardIncident &incident : incidents) {
        table.addRow(
            {clockText(incident.startedAt), incident.endedAt ? clockText(*incident.endedAt) : none,
             incident.application, dashboardIncidentStatusName(incident.status),
             unitText(incident.peakCPU, DisplayUnit::percent),
             incident.peakTemperature ? unitText(*incident.peakTemperature, DisplayUnit::celsius)
                                      : none,
             incident.action.value_or(none),
             formatLocaleInteger(static_cast<long long>(incident.points.size()))});
    }
    return Words::tr("本次运行的升温事件（最新在前）：") + QLatin1Char('\n') + table.render();
}

// The ten busiest processes of the sample: by CPU, then disk rate, then
// memory, so that an idle machine still lists its largest processes.
QString processesSection(const SystemMetricSample &sample)
{
    constexpr std::size_t shown = 10;
    std::vector<const ProcessMetric *> processes;
    processes.reserve(static_cast<std::size_t>(sample.processMetrics.size()));
    for (const ProcessMetric &process : sample.processMetrics)
        processes.push_back(&process);
    const auto busier = [](const ProcessMetric *a, const ProcessMetric *b) {
        if (a->cpuPercent != b->cpuPercent)
            return a->cpuPercent > b->cpuPercent;
        if (a->diskBytesPerSecond != b->diskBytesPerSecond)
            return a->diskBytesPerSecond > b->diskBytesPerSecond;
        if (a->residentBytes != b->residentBytes)
            return a->residentBytes > b->residentBytes;
        return a->identity.pid < b->identity.pid;
    };
    const std::size_t count = std::min(shown, processes.size());
    std::partial_sort(processes.begin(), processes.begin() + static_cast<std::ptrdiff_t>(count),
                      processes.end(), busier);

    TextTable table({Words::tr("进程", "column"), QStringLiteral("PID"), QStringLiteral("CPU"),
                     Words::tr("内存"), Words::tr("磁盘"), Words::tr("运行时长"),
                     Words::tr("安全命令"), Words::tr("项目")});
    for (std::size_t index = 0; index < count; ++index) {
        const ProcessMetric &process = *processes[index];
        // The process's own texts, made printable: the terminal reads them.
        const auto &project = process.command.project;
        table.addRow({printableText(process.name), QString::number(process.identity.pid),
                      unitText(process.cpuPercent, DisplayUnit::percent, 1),
                      memoryText(process.residentBytes), rateText(process.diskBytesPerSecond),
                      durationText(process.duration), printableText(process.command.command),
                      project ? printableText(*project) : QStringLiteral("-")});
    }
    return Words::tr("最忙的进程（最多 %1 个）").arg(formatLocaleInteger(shown)) +
           QLatin1Char('\n') + table.render();
}

QString sensorTableSection(const DashboardStore &store)
{
    TextTable table(
        {Words::tr("传感器"), Words::tr("来源"), Words::tr("当前值"), Words::tr("可用性")});
    for (const DashboardSensorStatus &status : store.sensorStatuses())
        table.addRow({status.title, status.source, status.currentValue,
                      sensorAvailabilityName(status.availability)});
    return table.render();
}

} // namespace

QString reportText(const DashboardStore &store, long long sampleCount)
{
    const std::optional<SystemMetricSample> &latest = store.latestSystemSample();
    if (sampleCount < 1 || !latest)
        return Words::tr("没有采集到样本。") + QLatin1Char('\n');
    const SystemMetricSample &last = *latest;
    QString out = Words::tr("KilnWarden 报告：共 %1 个样本，以下为最后一个样本")
                      .arg(formatLocaleInteger(sampleCount)) +
                  QLatin1Char('\n') + QLatin1Char('\n');
    out += readingsSection(last);
    out += QLatin1Char('\n') + processesSection(last);
    out += QLatin1Char('\n') + sensorTableSection(store);
    out += QLatin1Char('\n') + loadSourcesSection(store);
    // Each part of the dashboard's state adds its own section below.
    out += QLatin1Char('\n') + menuBarLine(store.menuBarPresentation());
    out += QLatin1Char('\n') + incidentsSection(store.incidents());
    return out;
}
