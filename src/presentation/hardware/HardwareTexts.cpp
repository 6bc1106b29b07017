#include "presentation/hardware/HardwareTexts.h"

#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/WholeNumberText.h"
#include "process/ByteTexts.h"
#include "sampling/Text.h"

#include <algorithm>
#include <cmath>

namespace {

QString sampling()
{
    return kwText("采集中");
}

std::optional<double> fieldOf(HardwareCategory category, const HardwareTrendPoint &point)
{
    switch (category) {
    case HardwareCategory::temperature:
        return point.temperature;
    case HardwareCategory::cpu:
        return point.cpu;
    case HardwareCategory::gpu:
        return point.gpu;
    case HardwareCategory::memory:
        return point.memoryPercent;
    case HardwareCategory::disk:
        if (point.diskBytesPerSecond)
            return *point.diskBytesPerSecond / 1'000'000.0;
        return std::nullopt;
    case HardwareCategory::fan:
        break;
    }
    return point.fanRPM;
}

// Calls `read` with the reading behind a category, whatever its value type.
template <typename Read>
auto withReadingOf(HardwareCategory category, const SystemMetricSample &sample, Read read)
{
    switch (category) {
    case HardwareCategory::temperature:
        return read(sample.temperatureCelsius);
    case HardwareCategory::cpu:
        return read(sample.cpuUsage);
    case HardwareCategory::gpu:
        return read(sample.gpuUsage);
    case HardwareCategory::memory:
        return read(sample.memoryUsage);
    case HardwareCategory::disk:
        return read(sample.diskBytesPerSecond);
    case HardwareCategory::fan:
        break;
    }
    return read(sample.fanRPM);
}

// The case of the reading behind a category, for the availability words.
SensorReadingCase readingCaseOf(HardwareCategory category, const SystemMetricSample &sample)
{
    return withReadingOf(category, sample,
                         [](const auto &reading) { return reading.readingCase(); });
}

// Used over total as a percent; 0 when the total is 0.
double memoryPercent(const SystemMemoryUsage &memory)
{
    if (memory.totalBytes == 0)
        return 0.0;
    return double(memory.usedBytes) / double(memory.totalBytes) * 100.0;
}

// 1, 2 or 5 times a power of ten: the smallest such step that is at least `raw`.
double roundStep(double raw)
{
    const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double factor : {1.0, 2.0, 5.0, 10.0}) {
        if (factor * magnitude >= raw * (1.0 - 1e-9))
            return factor * magnitude;
    }
    return 10.0 * magnitude;
}

} // namespace

std::vector<QPointF> hardwareSeries(HardwareCategory category,
                                    const std::vector<HardwareTrendPoint> &points)
{
    std::vector<QPointF> series;
    series.reserve(points.size());
    for (const HardwareTrendPoint &point : points) {
        const std::optional<double> value = fieldOf(category, point);
        if (value && std::isfinite(*value) && std::isfinite(point.elapsedSeconds))
            series.emplace_back(point.elapsedSeconds, *value);
    }
    return series;
}

bool hardwareNewestPointHasValue(HardwareCategory category,
                                 const std::vector<HardwareTrendPoint> &points)
{
    if (points.empty())
        return false;
    const std::optional<double> value = fieldOf(category, points.back());
    return value && std::isfinite(*value) && std::isfinite(points.back().elapsedSeconds);
}

QString hardwareSeriesValueText(HardwareCategory category, double value)
{
    switch (category) {
    case HardwareCategory::temperature:
        return formatLocaleNumber(value, 1) + QStringLiteral("°C");
    case HardwareCategory::cpu:
    case HardwareCategory::gpu:
    case HardwareCategory::memory:
        return wholePercentText(value);
    case HardwareCategory::disk:
        return formatLocaleNumber(value, 1) + QStringLiteral(" MB/s");
    case HardwareCategory::fan:
        break;
    }
    return formatLocaleInteger(roundedWholeNumber(value)) + QStringLiteral(" RPM");
}

HardwareSeriesFigures hardwareSeriesFigures(HardwareCategory category,
                                            const std::vector<QPointF> &series, bool unavailable)
{
    if (series.empty()) {
        const QString missing = unavailable ? kwText("不可用") : sampling();
        return {missing, missing};
    }
    double peak = series.front().y();
    double sum = 0.0;
    for (const QPointF &point : series) {
        peak = std::max(peak, point.y());
        sum += point.y();
    }
    return {hardwareSeriesValueText(category, peak),
            hardwareSeriesValueText(category, sum / double(series.size()))};
}

std::optional<QString> hardwareUnavailableReason(HardwareCategory category,
                                                 const std::optional<SystemMetricSample> &latest)
{
    if (!latest)
        return std::nullopt;
    const SensorReadingCase readingCase = readingCaseOf(category, *latest);
    if (sensorAvailability(readingCase) != SensorAvailability::unavailable)
        return std::nullopt;
    const std::optional<QString> reason = withReadingOf(
        category, *latest, [](const auto &reading) { return reading.reasonText(); });
    if (!reason || reason->trimmed().isEmpty())
        return kwText("不可用");
    return reason;
}

QString hardwareCurrentText(HardwareCategory category,
                            const std::optional<SystemMetricSample> &latest)
{
    if (!latest)
        return sampling();
    switch (category) {
    case HardwareCategory::temperature:
        if (latest->temperatureCelsius.isAvailable())
            return formatLocaleNumber(*latest->temperatureCelsius.value(), 1) +
                   QStringLiteral("°C");
        if (sensorAvailability(latest->temperatureCelsius.readingCase()) ==
            SensorAvailability::unavailable)
            return kwText("不可用");
        return sampling();
    case HardwareCategory::cpu:
        return latest->cpuUsage.displayText(QStringLiteral("%"), 0);
    case HardwareCategory::gpu:
        return latest->gpuUsage.displayText(QStringLiteral("%"), 0);
    case HardwareCategory::memory:
        if (latest->memoryUsage.isAvailable())
            return wholePercentText(memoryPercent(*latest->memoryUsage.value()));
        // The same words displayText gives for a number that is not there.
        return latest->memoryUsage.statusText();
    case HardwareCategory::disk:
        if (latest->diskBytesPerSecond.isAvailable())
            return rateText(*latest->diskBytesPerSecond.value());
        return latest->diskBytesPerSecond.displayText({}, 0);
    case HardwareCategory::fan:
        break;
    }
    return latest->fanRPM.displayText(QStringLiteral(" RPM"), 0);
}

HardwareStatusLine hardwareStatusLine(HardwareCategory category,
                                      const std::optional<SystemMetricSample> &latest)
{
    namespace P = DashboardPalette;
    if (category == HardwareCategory::temperature) {
        const SystemThermalState state =
            latest ? latest->thermalState : SystemThermalState::unknown;
        switch (state) {
        case SystemThermalState::nominal:
            return {kwText("热状态%1").arg(kwText("正常")), P::success};
        case SystemThermalState::fair:
            return {kwText("热状态%1").arg(kwText("偏热")), P::warning};
        case SystemThermalState::serious:
            return {kwText("热状态%1").arg(kwText("较热")), P::danger};
        case SystemThermalState::critical:
            return {kwText("热状态%1").arg(kwText("过热")), P::danger};
        case SystemThermalState::unknown:
            break;
        }
        if (const auto reason = hardwareUnavailableReason(category, latest))
            return {*reason, P::textTertiary};
        return {kwText("热状态%1").arg(sampling()), P::textTertiary};
    }
    const SensorAvailability availability =
        latest ? sensorAvailability(readingCaseOf(category, *latest))
               : SensorAvailability::warmingUp;
    switch (availability) {
    case SensorAvailability::available:
        return {kwText("数据正常"), P::success};
    case SensorAvailability::warmingUp:
        return {kwText("正在采集"), P::warning};
    case SensorAvailability::unavailable:
        break;
    }
    return {kwText("当前不可用"), P::textTertiary};
}

HardwareScale hardwareScale(HardwareCategory category, const std::vector<QPointF> &series)
{
    double peak = 0.0;
    for (const QPointF &point : series)
        peak = std::max(peak, point.y());
    switch (category) {
    case HardwareCategory::temperature:
        return {30.0, 90.0};
    case HardwareCategory::cpu:
    case HardwareCategory::gpu:
    case HardwareCategory::memory:
        return {0.0, 100.0};
    case HardwareCategory::disk:
        return {0.0, std::max(10.0, 1.2 * peak)};
    case HardwareCategory::fan:
        break;
    }
    return {0.0, std::max(4000.0, 1.15 * peak)};
}

std::vector<double> hardwareScaleTicks(const HardwareScale &scale)
{
    std::vector<double> ticks;
    const double range = scale.upperBound - scale.lowerBound;
    if (!std::isfinite(range) || !(range > 0.0))
        return ticks;
    const double step = roundStep(range / 6.0);
    if (!std::isfinite(step) || !(step > 0.0))
        return ticks;
    const double first = std::ceil(scale.lowerBound / step - 1e-9);
    for (double index = first; index * step <= scale.upperBound * (1.0 + 1e-12) + 1e-9; ++index) {
        ticks.push_back(index * step);
        if (ticks.size() > 12)
            break;
    }
    return ticks;
}

QString hardwareAxisValueText(HardwareCategory category, double value)
{
    switch (category) {
    case HardwareCategory::temperature:
    case HardwareCategory::cpu:
    case HardwareCategory::gpu:
    case HardwareCategory::memory:
        return wholeNumberText(value);
    case HardwareCategory::disk: {
        const double tenths = std::round(value * 10.0) / 10.0;
        if (tenths == std::round(tenths))
            return formatLocaleNumber(tenths, 0);
        return formatLocaleNumber(tenths, 1);
    }
    case HardwareCategory::fan:
        break;
    }
    return formatLocaleInteger(roundedWholeNumber(value));
}

QString hardwareTimeAxisLabel(double elapsedSeconds)
{
    const double before = kHardwareTrendWindowSeconds - elapsedSeconds;
    if (!(before > 0.0))
        return kwText("现在");
    return QStringLiteral("-%1s").arg(roundedWholeNumber(before));
}

SensorTableColumns sensorTableColumns(double width)
{
    if (width >= 1100.0)
        return {520.0, 260.0, 180.0, width - 960.0};
    SensorTableColumns columns;
    columns.location = std::max(0.23 * width, 140.0);
    columns.reading = std::max(0.16 * width, 120.0);
    columns.status = std::max(0.15 * width, 100.0);
    columns.sensor = std::max(width - columns.location - columns.reading - columns.status, 180.0);
    return columns;
}

QString sensorLocationText(const DashboardSensorStatus &status)
{
    const QString &id = status.id;
    if (id == QLatin1String("temperature") || id == QLatin1String("gpu"))
        return id == QLatin1String("gpu") ? kwText("显卡") : kwText("处理器");
    if (id == QLatin1String("fan"))
        return kwText("机身内部");
    if (id == QLatin1String("memory") || id == QLatin1String("network"))
        return kwText("系统");
    if (id == QLatin1String("disk"))
        return kwText("存储");
    if (id == QLatin1String("processes"))
        return kwText("当前用户");
    return status.source;
}

SensorStatusLook sensorStatusLook(SensorAvailability availability)
{
    namespace P = DashboardPalette;
    switch (availability) {
    case SensorAvailability::available:
        return {kwText("正常"), P::success};
    case SensorAvailability::warmingUp:
        return {kwText("采集中"), P::warning};
    case SensorAvailability::unavailable:
        break;
    }
    return {kwText("不可用"), P::textTertiary};
}
