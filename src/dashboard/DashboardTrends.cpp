#include "dashboard/DashboardTrends.h"

#include "sampling/Text.h"
#include "sampling/UnitText.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DashboardTrends)
};

template <typename Value> std::optional<Value> availableValue(const SensorReading<Value> &reading)
{
    return reading.isAvailable() ? reading.value() : std::nullopt;
}

// The chart position of a sample: the newest at w, one exactly w older at 0.
double elapsedInWindow(TimePoint timestamp, TimePoint end, double windowSeconds)
{
    return std::clamp(windowSeconds + timestamp.secondsSince(end), 0.0, windowSeconds);
}

template <typename Point, typename Build>
std::vector<Point> trendPoints(const MetricSampleHistory &history, double windowSeconds,
                               Build build)
{
    std::vector<Point> points;
    if (history.samples().empty())
        return points;
    const TimePoint end = history.samples().back().timestamp;
    const std::vector<SystemMetricSample> samples = history.recentSamples(windowSeconds);
    points.reserve(samples.size());
    for (const SystemMetricSample &sample : samples)
        points.push_back(build(sample, elapsedInWindow(sample.timestamp, end, windowSeconds)));
    return points;
}

// The reading's source when available, else its reason, else its short word
// ("采集中" for a reading still warming up).
template <typename Value> QString statusSource(const SensorReading<Value> &reading)
{
    if (reading.isAvailable())
        return reading.sourceText();
    return reading.reasonText().value_or(reading.sourceText());
}

template <typename Value>
DashboardSensorStatus readingRow(const char *id, const char *title, const char *symbolName,
                                 const SensorReading<Value> &reading, QString currentValue)
{
    return {QString::fromLatin1(id),         Words::tr(title),
            QString::fromLatin1(symbolName), statusSource(reading),
            std::move(currentValue),         sensorAvailability(reading.readingCase())};
}

} // namespace

QString sensorAvailabilityName(SensorAvailability availability)
{
    switch (availability) {
    case SensorAvailability::available:
        return QStringLiteral("available");
    case SensorAvailability::warmingUp:
        return QStringLiteral("warmingUp");
    case SensorAvailability::unavailable:
        return QStringLiteral("unavailable");
    }
    return {};
}

SensorAvailability sensorAvailability(SensorReadingCase readingCase)
{
    switch (readingCase) {
    case SensorReadingCase::available:
        return SensorAvailability::available;
    case SensorReadingCase::warmingUp:
        return SensorAvailability::warmingUp;
    case SensorReadingCase::unsupported:
    case SensorReadingCase::permissionDenied:
    case SensorReadingCase::temporarilyUnavailable:
        break;
    }
    return SensorAvailability::unavailable;
}

std::vector<HeatTrendPoint> heatTrendPoints(const MetricSampleHistory &history,
                                            double windowSeconds)
{
    return trendPoints<HeatTrendPoint>(
        history, windowSeconds, [](const SystemMetricSample &sample, double elapsed) {
            HeatTrendPoint point;
            point.elapsedSeconds = elapsed;
            point.cpu = availableValue(sample.cpuUsage);
            point.temperature = availableValue(sample.temperatureCelsius);
            point.fanRPM = availableValue(sample.fanRPM);
            point.thermalState = sample.thermalState;
            return point;
        });
}

std::vector<HardwareTrendPoint> hardwareTrendPoints(const MetricSampleHistory &history,
                                                    double windowSeconds)
{
    return trendPoints<HardwareTrendPoint>(
        history, windowSeconds, [](const SystemMetricSample &sample, double elapsed) {
            HardwareTrendPoint point;
            point.timestamp = sample.timestamp;
            point.elapsedSeconds = elapsed;
            point.cpu = availableValue(sample.cpuUsage);
            point.gpu = availableValue(sample.gpuUsage);
            if (const auto memory = availableValue(sample.memoryUsage)) {
                point.memoryPercent =
                    memory->totalBytes == 0
                        ? 0.0
                        : double(memory->usedBytes) / double(memory->totalBytes) * 100.0;
            }
            point.temperature = availableValue(sample.temperatureCelsius);
            point.fanRPM = availableValue(sample.fanRPM);
            point.diskBytesPerSecond = availableValue(sample.diskBytesPerSecond);
            if (const auto network = availableValue(sample.networkThroughput)) {
                point.networkReceivedBytesPerSecond = network->receivedBytesPerSecond;
                point.networkSentBytesPerSecond = network->sentBytesPerSecond;
            }
            return point;
        });
}

std::vector<DashboardSensorStatus> sensorStatuses(const std::optional<SystemMetricSample> &latest,
                                                  const QString &processesSource)
{
    if (!latest) {
        return {{QStringLiteral("sampling"), Words::tr("本机传感器"),
                 QStringLiteral("waveform.path.ecg"), Words::tr("正在建立数据源连接"),
                 Words::tr("采集中"), SensorAvailability::warmingUp}};
    }
    const SystemMetricSample &sample = *latest;
    const auto &network = sample.networkThroughput;
    return {
        readingRow("temperature", QT_TRANSLATE_NOOP("DashboardTrends", "温度"),
                   "thermometer.medium", sample.temperatureCelsius,
                   readingText(sample.temperatureCelsius, DisplayUnit::celsius)),
        readingRow("fan", QT_TRANSLATE_NOOP("DashboardTrends", "风扇"), "fan", sample.fanRPM,
                   readingText(sample.fanRPM, DisplayUnit::rpm)),
        readingRow("gpu", "GPU", "cpu", sample.gpuUsage,
                   readingText(sample.gpuUsage, DisplayUnit::percent)),
        readingRow("memory", QT_TRANSLATE_NOOP("DashboardTrends", "内存"), "memorychip",
                   sample.memoryUsage, memoryReadingText(sample.memoryUsage)),
        readingRow("disk", QT_TRANSLATE_NOOP("DashboardTrends", "磁盘"), "externaldrive",
                   sample.diskBytesPerSecond, rateReadingText(sample.diskBytesPerSecond)),
        readingRow("network", QT_TRANSLATE_NOOP("DashboardTrends", "网络"), "network", network,
                   network.isAvailable() ? rateText(network.value()->receivedBytesPerSecond +
                                                    network.value()->sentBytesPerSecond)
                                         : network.statusText()),
        {QStringLiteral("processes"), Words::tr("进程采样"), QStringLiteral("waveform.path.ecg"),
         processesSource, Words::tr("正常"), SensorAvailability::available},
    };
}
