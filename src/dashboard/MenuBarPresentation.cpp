#include "dashboard/MenuBarPresentation.h"

#include "dashboard/HeatTest.h"
#include "sampling/EnumTable.h"
#include "sampling/Text.h"
#include "sampling/UnitText.h"

#include <QCoreApplication>

#include <cmath>
#include <string_view>

namespace {

// The translation context of this file's texts and of its tables'.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(MenuBarPresentation)
};

using S = MenuBarPresentationState;
constexpr MenuBarStateInfo kStateRows[] = {
    {S::collecting, "collecting", "KilnWarden",
     QT_TRANSLATE_NOOP("MenuBarPresentation", "正在采集系统状态"), "waveform.path.ecg",
     QT_TRANSLATE_NOOP("MenuBarPresentation", "正在采集系统状态"), "%1"},
    {S::observing, "observing", QT_TRANSLATE_NOOP("MenuBarPresentation", "观察中"),
     QT_TRANSLATE_NOOP("MenuBarPresentation", "观察中"), "eye",
     QT_TRANSLATE_NOOP("MenuBarPresentation", "正在观察系统状态"), "KilnWarden %1"},
    {S::normal, "normal", QT_TRANSLATE_NOOP("MenuBarPresentation", "正常"),
     QT_TRANSLATE_NOOP("MenuBarPresentation", "系统状态正常"), "checkmark.circle.fill",
     QT_TRANSLATE_NOOP("MenuBarPresentation", "当前未发现需要处理的持续高负载"),
     QT_TRANSLATE_NOOP("MenuBarPresentation", "正常 · %1")},
    {S::highLoad, "highLoad", QT_TRANSLATE_NOOP("MenuBarPresentation", "负载高"),
     QT_TRANSLATE_NOOP("MenuBarPresentation", "负载高"), "exclamationmark.triangle.fill", nullptr,
     "KilnWarden %1"},
    {S::actionRecommended, "actionRecommended",
     QT_TRANSLATE_NOOP("MenuBarPresentation", "建议处理"),
     QT_TRANSLATE_NOOP("MenuBarPresentation", "建议处理"), "exclamationmark.octagon.fill", nullptr,
     "KilnWarden %1"},
};
static_assert(coversEnumeration(kStateRows, S::actionRecommended));

// Every row complete: a name of its own, words and a symbol, a message
// exactly when calm, and a spoken form around the title.
constexpr bool stateRowsAreComplete()
{
    const auto hasText = [](const char *text) { return text && *text; };
    for (const MenuBarStateInfo &row : kStateRows) {
        if (!hasText(row.name) || !hasText(row.title) || !hasText(row.headline) ||
            !hasText(row.symbolName) || (row.message != nullptr) == isAbnormalMenuBarState(row.key) ||
            std::string_view(row.spokenTitle).find("%1") == std::string_view::npos)
            return false;
        for (const MenuBarStateInfo &other : kStateRows) {
            if (&other != &row && std::string_view(other.name) == row.name)
                return false;
        }
    }
    return true;
}
static_assert(stateRowsAreComplete());

} // namespace

const MenuBarStateInfo &menuBarStateInfo(MenuBarPresentationState state)
{
    return enumRow(kStateRows, state);
}

QString menuBarStateText(const char *text)
{
    return Words::tr(text);
}

QString menuBarPresentationStateName(MenuBarPresentationState state)
{
    return QString::fromLatin1(menuBarStateInfo(state).name);
}

MenuBarPresentationState menuBarState(const SystemMetricSample *sample,
                                      std::optional<double> topTaskCPU)
{
    if (!sample)
        return MenuBarPresentationState::collecting;
    const std::optional<double> &temperature = sample->temperatureCelsius.value();
    if (sample->thermalState == SystemThermalState::serious ||
        sample->thermalState == SystemThermalState::critical ||
        (temperature && *temperature >= kActionRecommendedTemperatureCelsius))
        return MenuBarPresentationState::actionRecommended;
    if (isSampleHot(*sample, topTaskCPU))
        return MenuBarPresentationState::highLoad;
    if (sample->thermalState == SystemThermalState::unknown)
        return MenuBarPresentationState::observing;
    return MenuBarPresentationState::normal;
}

QString formatTemperature(double celsius)
{
    const bool justBelowThreshold =
        (celsius >= 74.0 && celsius < 75.0) || (celsius >= 89.0 && celsius < 90.0);
    if (justBelowThreshold) {
        const double cut = std::floor(celsius * 10.0) / 10.0;
        return formatLocaleNumber(cut, cut == std::floor(cut) ? 0 : 1);
    }
    return formatLocaleNumber(celsius, 0);
}

namespace {

QString stateSymbol(MenuBarPresentationState state)
{
    return QString::fromLatin1(menuBarStateInfo(state).symbolName);
}

std::optional<QString> stateMessage(MenuBarPresentationState state)
{
    const char *message = menuBarStateInfo(state).message;
    return message ? std::optional<QString>(Words::tr(message)) : std::nullopt;
}

QString menuTitle(MenuBarPresentationState state, const SystemMetricSample *sample)
{
    const QString title = Words::tr(menuBarStateInfo(state).title);
    if (state == MenuBarPresentationState::collecting || !sample)
        return title;
    const std::optional<double> &temperature = sample->temperatureCelsius.value();
    if (!temperature)
        return title;
    const QString reading = formatTemperature(*temperature) + unitSuffix(DisplayUnit::degrees);
    if (state == MenuBarPresentationState::normal)
        return reading;
    return title + QStringLiteral(" · ") + reading;
}

std::optional<QString> abnormalDurationText(MenuBarPresentationState state,
                                            const SystemMetricSample *sample,
                                            std::optional<TimePoint> abnormalStartedAt)
{
    if (!isAbnormalMenuBarState(state) || !sample)
        return std::nullopt;
    if (abnormalStartedAt) {
        const double elapsed = sample->timestamp.secondsSince(*abnormalStartedAt);
        // A non-finite span (a broken clock value) can't be cut to minutes.
        if (std::isfinite(elapsed) && elapsed >= kMenuBarDurationStartSeconds) {
            const auto minutes = static_cast<long long>(elapsed / 60.0);
            return Words::tr("已持续 %1")
                .arg(Words::tr("%1 分钟").arg(formatLocaleInteger(minutes)));
        }
    }
    return Words::tr("刚刚出现");
}

enum class MetricKind { cpu, temperature, fan };

struct MetricRow {
    MetricKind key;
    const char *id;
    const char *title;
    SensorReading<double> SystemMetricSample::*reading;
    DisplayUnit unit;
};
constexpr MetricRow kMetricRows[] = {
    {MetricKind::cpu, "cpu", "CPU", &SystemMetricSample::cpuUsage, DisplayUnit::percent},
    {MetricKind::temperature, "temperature", QT_TRANSLATE_NOOP("MenuBarPresentation", "温度"),
     &SystemMetricSample::temperatureCelsius, DisplayUnit::celsius},
    {MetricKind::fan, "fan", QT_TRANSLATE_NOOP("MenuBarPresentation", "风扇"),
     &SystemMetricSample::fanRPM, DisplayUnit::rpm},
};
static_assert(coversEnumeration(kMetricRows, MetricKind::fan));

MenuBarPresentationMetric makeMetric(MetricKind kind, const SystemMetricSample *sample)
{
    const MetricRow &row = enumRow(kMetricRows, kind);
    MenuBarPresentationMetric metric;
    metric.id = QString::fromLatin1(row.id);
    metric.title = Words::tr(row.title);
    // No sample yet: warming up.
    const SensorReading<double> reading = sample ? (*sample).*row.reading : SensorReading<double>();
    if (reading.readingCase() == SensorReadingCase::permissionDenied) {
        // The panel is narrow: show the short word, speak the full one.
        metric.value = Words::tr("受限");
        metric.accessibilityValue = readingText(reading, row.unit);
    } else if (kind == MetricKind::temperature && reading.isAvailable()) {
        metric.value = formatTemperature(*reading.value()) + unitSuffix(row.unit);
    } else {
        metric.value = readingText(reading, row.unit);
    }
    return metric;
}

} // namespace

MenuBarPresentation pausedMenuBarPresentation()
{
    const QString paused = Words::tr("已暂停");
    const auto metric = [&paused](MetricKind kind) {
        MenuBarPresentationMetric noFigure = makeMetric(kind, nullptr);
        noFigure.value = QStringLiteral("—");
        noFigure.accessibilityValue = paused;
        return noFigure;
    };
    return MenuBarPresentation{
        .state = MenuBarPresentationState::collecting,
        .menuTitle = paused,
        .headline = paused,
        .durationText = std::nullopt,
        .symbolName = stateSymbol(MenuBarPresentationState::collecting),
        .cpu = metric(MetricKind::cpu),
        .temperature = metric(MetricKind::temperature),
        .fan = metric(MetricKind::fan),
        .statusMessage = std::nullopt,
        .primaryTask = std::nullopt,
        .remainingAttentionTaskCount = 0,
    };
}

MenuBarPresentation makePresentation(const SystemMetricSample *sample,
                                     const std::vector<DashboardTask> &tasks,
                                     std::optional<TimePoint> abnormalStartedAt)
{
    const std::optional<double> topTaskCPU =
        tasks.empty() ? std::nullopt : std::optional<double>(tasks.front().cpu);
    const MenuBarPresentationState state = menuBarState(sample, topTaskCPU);

    MenuBarPresentation presentation{
        .state = state,
        .menuTitle = menuTitle(state, sample),
        .headline = Words::tr(menuBarStateInfo(state).headline),
        .durationText = abnormalDurationText(state, sample, abnormalStartedAt),
        .symbolName = stateSymbol(state),
        .cpu = makeMetric(MetricKind::cpu, sample),
        .temperature = makeMetric(MetricKind::temperature, sample),
        .fan = makeMetric(MetricKind::fan, sample),
        .statusMessage = stateMessage(state),
        .primaryTask = std::nullopt,
        .remainingAttentionTaskCount = 0,
    };

    if (!isAbnormalMenuBarState(state))
        return presentation;
    // The whole task list counts, beyond the four live ones; in high load it
    // may name nobody, since the heat can come from outside the user's processes.
    qint64 attentionCount = 0;
    for (const DashboardTask &task : tasks) {
        if (task.energy == ResourceImpact::low)
            continue;
        if (attentionCount == 0) {
            presentation.primaryTask = MenuBarPresentationTask{
                .application = task.application,
                .cpuText = unitText(task.cpu, DisplayUnit::percent),
                .runningDuration = task.duration,
            };
        }
        ++attentionCount;
    }
    presentation.remainingAttentionTaskCount = attentionCount > 0 ? attentionCount - 1 : 0;
    return presentation;
}
