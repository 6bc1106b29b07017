#include "presentation/report/ReportText.h"

#include "presentation/report/ReportTasks.h"
#include "presentation/report/TextTable.h"
#include "sampling/Text.h"

#include <QLocale>

namespace {

QString sourceOrReason(const auto &reading)
{
    return reading.reasonText().value_or(reading.sourceText());
}

QString bytesText(std::uint64_t bytes)
{
    return QLocale().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeSIFormat);
}

QString readingsSection(const SystemMetricSample &sample)
{
    TextTable table({kwText("读数"), kwText("当前值"), kwText("来源或原因")});
    auto addNumber = [&](const QString &title, const SensorReading<double> &reading,
                         const QString &unit, int digits) {
        table.addRow({title, reading.displayText(unit, digits), sourceOrReason(reading)});
    };
    addNumber(kwText("CPU 使用率"), sample.cpuUsage, QStringLiteral("%"), 0);
    table.addRow({kwText("热状态"), systemThermalStateLabel(sample.thermalState),
                  systemThermalStateRawText(sample.thermalState)});
    addNumber(kwText("温度"), sample.temperatureCelsius, QStringLiteral("°C"), 1);
    addNumber(kwText("风扇"), sample.fanRPM, QStringLiteral(" RPM"), 0);
    addNumber(kwText("GPU"), sample.gpuUsage, QStringLiteral("%"), 0);
    {
        const auto &disk = sample.diskBytesPerSecond;
        const QString value =
            disk.isAvailable() ? bytesText(std::uint64_t(*disk.value())) + QStringLiteral("/s")
                               : disk.displayText(QString(), 0);
        table.addRow({kwText("磁盘"), value, sourceOrReason(disk)});
    }
    {
        const auto &memory = sample.memoryUsage;
        const QString value = memory.isAvailable()
                                  ? bytesText(memory.value()->usedBytes) + QStringLiteral(" / ") +
                                        bytesText(memory.value()->totalBytes)
                                  : memory.statusText();
        table.addRow({kwText("内存"), value, sourceOrReason(memory)});
    }
    {
        const auto &network = sample.networkThroughput;
        const QString value =
            network.isAvailable()
                ? QStringLiteral("↓ %1/s  ↑ %2/s")
                      .arg(bytesText(std::uint64_t(network.value()->receivedBytesPerSecond)),
                           bytesText(std::uint64_t(network.value()->sentBytesPerSecond)))
                : network.statusText();
        table.addRow({kwText("网络"), value, sourceOrReason(network)});
    }
    table.addRow({kwText("进程"), formatLocaleInteger(sample.processMetrics.size()),
                  QString()});
    return table.render();
}

} // namespace

QString reportText(const DashboardStore &store, const std::vector<SystemMetricSample> &samples)
{
    if (samples.empty())
        return kwText("没有采集到样本。") + QLatin1Char('\n');
    const SystemMetricSample &last = samples.back();
    QString out = kwText("KilnWarden 报告：共 %1 个样本，以下为最后一个样本")
                      .arg(formatLocaleInteger(static_cast<long long>(samples.size()))) +
                  QLatin1Char('\n') + QLatin1Char('\n');
    out += readingsSection(last);
    out += QLatin1Char('\n') + loadSourcesSection(store);
    // Each part of the dashboard's state adds its own section below.
    return out;
}
