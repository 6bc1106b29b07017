#include "presentation/hardware/HardwareTexts.h"

#include "presentation/kit/DashboardPalette.h"
#include "sampling/EnumTable.h"
#include "sampling/Text.h"
#include "sampling/UnitText.h"

#include <algorithm>
#include <cmath>

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(HardwareTexts)
};

QString sampling()
{
    return Words::tr("采集中");
}

// How a category's figures are read and shown.
struct CategoryRow {
    HardwareCategory key;
    std::optional<double> HardwareTrendPoint::*field;
    double perShownUnit; // the stored value over the shown one: bytes per MB for disk
    DisplayUnit unit;
    // The chart's scale: from `lowerBound` to `upperFloor`, or the series'
    // peak times `headroom` when that is higher (0: fixed).
    double lowerBound;
    double upperFloor;
    double headroom;
};

using P = HardwareTrendPoint;
constexpr CategoryRow kCategoryRows[] = {
    {HardwareCategory::temperature, &P::temperature, 1.0, DisplayUnit::celsius, 30, 90, 0},
    {HardwareCategory::cpu, &P::cpu, 1.0, DisplayUnit::percent, 0, 100, 0},
    {HardwareCategory::gpu, &P::gpu, 1.0, DisplayUnit::percent, 0, 100, 0},
    {HardwareCategory::memory, &P::memoryPercent, 1.0, DisplayUnit::percent, 0, 100, 0},
    {HardwareCategory::disk, &P::diskBytesPerSecond, 1e6, DisplayUnit::megabytesPerSecond, 0, 10,
     1.2},
    {HardwareCategory::fan, &P::fanRPM, 1.0, DisplayUnit::rpm, 0, 4000, 1.15},
};
static_assert(coversEnumeration(kCategoryRows, HardwareCategory::fan));

namespace Palette = DashboardPalette;

// The temperature's status line by thermal state; `unknown` says nothing of
// its own and falls back to the reading.
struct ThermalRow {
    SystemThermalState key;
    const char *word; // after "热状态"
    QRgb color;
};
constexpr ThermalRow kThermalRows[] = {
    {SystemThermalState::nominal, QT_TRANSLATE_NOOP("HardwareTexts", "正常"), Palette::success},
    {SystemThermalState::fair, QT_TRANSLATE_NOOP("HardwareTexts", "偏热"), Palette::warning},
    {SystemThermalState::serious, QT_TRANSLATE_NOOP("HardwareTexts", "较热"), Palette::danger},
    {SystemThermalState::critical, QT_TRANSLATE_NOOP("HardwareTexts", "过热"), Palette::danger},
    {SystemThermalState::unknown, nullptr, Palette::textTertiary},
};
static_assert(coversEnumeration(kThermalRows, SystemThermalState::unknown));

// The other categories' status line and the sensor table's status column.
struct AvailabilityRow {
    SensorAvailability key;
    const char *statusLine;
    const char *tableWord;
    QRgb color;
};
constexpr AvailabilityRow kAvailabilityRows[] = {
    {SensorAvailability::available, QT_TRANSLATE_NOOP("HardwareTexts", "数据正常"),
     QT_TRANSLATE_NOOP("HardwareTexts", "正常"), Palette::success},
    {SensorAvailability::warmingUp, QT_TRANSLATE_NOOP("HardwareTexts", "正在采集"),
     QT_TRANSLATE_NOOP("HardwareTexts", "采集中"), Palette::warning},
    {SensorAvailability::unavailable, QT_TRANSLATE_NOOP("HardwareTexts", "当前不可用"),
     QT_TRANSLATE_NOOP("HardwareTexts", "不可用"), Palette::textTertiary},
};
static_assert(coversEnumeration(kAvailabilityRows, SensorAvailability::unavailable));

std::optional<double> fieldOf(HardwareCategory category, const HardwareTrendPoint &point)
{
    const CategoryRow &row = enumRow(kCategoryRows, category);
    const std::optional<double> &value = point.*row.field;
    if (!value)
        return std::nullopt;
    return *value / row.perShownUnit;
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
    const DisplayUnit unit = enumRow(kCategoryRows, category).unit;
    if (unit == DisplayUnit::percent)
        return wholePercentText(value);
    if (unit == DisplayUnit::rpm)
        return unitText(double(roundedWholeNumber(value)), unit);
    return unitText(value, unit);
}

HardwareSeriesFigures hardwareSeriesFigures(HardwareCategory category,
                                            const std::vector<QPointF> &series, bool unavailable)
{
    if (series.empty()) {
        const QString missing = unavailable ? Words::tr("不可用") : sampling();
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
    const std::optional<QString> reason =
        withReadingOf(category, *latest, [](const auto &reading) { return reading.reasonText(); });
    if (!reason || reason->trimmed().isEmpty())
        return Words::tr("不可用");
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
            return unitText(*latest->temperatureCelsius.value(), DisplayUnit::celsius);
        if (sensorAvailability(latest->temperatureCelsius.readingCase()) ==
            SensorAvailability::unavailable)
            return Words::tr("不可用");
        return sampling();
    case HardwareCategory::cpu:
        return readingText(latest->cpuUsage, DisplayUnit::percent);
    case HardwareCategory::gpu:
        return readingText(latest->gpuUsage, DisplayUnit::percent);
    case HardwareCategory::memory:
        if (latest->memoryUsage.isAvailable())
            return wholePercentText(memoryPercent(*latest->memoryUsage.value()));
        // The status word every other reading shows when it has no number.
        return latest->memoryUsage.statusText();
    case HardwareCategory::disk:
        return rateReadingText(latest->diskBytesPerSecond);
    case HardwareCategory::fan:
        break;
    }
    return readingText(latest->fanRPM, DisplayUnit::rpm);
}

HardwareStatusLine hardwareStatusLine(HardwareCategory category,
                                      const std::optional<SystemMetricSample> &latest)
{
    if (category == HardwareCategory::temperature) {
        const ThermalRow &row =
            enumRow(kThermalRows, latest ? latest->thermalState : SystemThermalState::unknown);
        if (row.word)
            return {Words::tr("热状态%1").arg(Words::tr(row.word)), row.color};
        if (const auto reason = hardwareUnavailableReason(category, latest))
            return {*reason, row.color};
        return {Words::tr("热状态%1").arg(sampling()), row.color};
    }
    const AvailabilityRow &row =
        enumRow(kAvailabilityRows, latest ? sensorAvailability(readingCaseOf(category, *latest))
                                          : SensorAvailability::warmingUp);
    return {Words::tr(row.statusLine), row.color};
}

HardwareScale hardwareScale(HardwareCategory category, const std::vector<QPointF> &series)
{
    double peak = 0.0;
    for (const QPointF &point : series)
        peak = std::max(peak, point.y());
    const CategoryRow &row = enumRow(kCategoryRows, category);
    return {row.lowerBound, std::max(row.upperFloor, row.headroom * peak)};
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
    const DisplayUnit unit = enumRow(kCategoryRows, category).unit;
    if (unit == DisplayUnit::megabytesPerSecond) {
        const double tenths = std::round(value * 10.0) / 10.0;
        return formatLocaleNumber(tenths, tenths == std::round(tenths) ? 0 : 1);
    }
    if (unit == DisplayUnit::rpm)
        return formatLocaleInteger(roundedWholeNumber(value));
    return wholeNumberText(value);
}

QString hardwareTimeAxisLabel(double elapsedSeconds)
{
    const double before = kHardwareTrendWindowSeconds - elapsedSeconds;
    if (!(before > 0.0))
        return Words::tr("现在");
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
        return id == QLatin1String("gpu") ? Words::tr("显卡") : Words::tr("处理器");
    if (id == QLatin1String("fan"))
        return Words::tr("机身内部");
    if (id == QLatin1String("memory") || id == QLatin1String("network"))
        return Words::tr("系统");
    if (id == QLatin1String("disk"))
        return Words::tr("存储");
    if (id == QLatin1String("processes"))
        return Words::tr("当前用户");
    return status.source;
}

SensorStatusLook sensorStatusLook(SensorAvailability availability)
{
    const AvailabilityRow &row = enumRow(kAvailabilityRows, availability);
    return {Words::tr(row.tableWord), row.color};
}
