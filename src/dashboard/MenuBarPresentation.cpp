#include "dashboard/MenuBarPresentation.h"

#include "dashboard/HeatTest.h"
#include "sampling/Text.h"

#include <cmath>

QString menuBarPresentationStateName(MenuBarPresentationState state)
{
    switch (state) {
    case MenuBarPresentationState::collecting:
        return QStringLiteral("collecting");
    case MenuBarPresentationState::observing:
        return QStringLiteral("observing");
    case MenuBarPresentationState::normal:
        return QStringLiteral("normal");
    case MenuBarPresentationState::highLoad:
        return QStringLiteral("highLoad");
    case MenuBarPresentationState::actionRecommended:
        return QStringLiteral("actionRecommended");
    }
    return QStringLiteral("collecting");
}

bool isAbnormalMenuBarState(MenuBarPresentationState state)
{
    return state == MenuBarPresentationState::highLoad ||
           state == MenuBarPresentationState::actionRecommended;
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

QString stateTitle(MenuBarPresentationState state)
{
    switch (state) {
    case MenuBarPresentationState::collecting:
        return QStringLiteral("KilnWarden");
    case MenuBarPresentationState::observing:
        return kwText("观察中");
    case MenuBarPresentationState::normal:
        return kwText("正常");
    case MenuBarPresentationState::highLoad:
        return kwText("负载高");
    case MenuBarPresentationState::actionRecommended:
        return kwText("建议处理");
    }
    return {};
}

QString stateHeadline(MenuBarPresentationState state)
{
    switch (state) {
    case MenuBarPresentationState::collecting:
        return kwText("正在采集系统状态");
    case MenuBarPresentationState::observing:
        return kwText("观察中");
    case MenuBarPresentationState::normal:
        return kwText("系统状态正常");
    case MenuBarPresentationState::highLoad:
        return kwText("负载高");
    case MenuBarPresentationState::actionRecommended:
        return kwText("建议处理");
    }
    return {};
}

QString stateSymbol(MenuBarPresentationState state)
{
    switch (state) {
    case MenuBarPresentationState::collecting:
        return QStringLiteral("waveform.path.ecg");
    case MenuBarPresentationState::observing:
        return QStringLiteral("eye");
    case MenuBarPresentationState::normal:
        return QStringLiteral("checkmark.circle.fill");
    case MenuBarPresentationState::highLoad:
        return QStringLiteral("exclamationmark.triangle.fill");
    case MenuBarPresentationState::actionRecommended:
        return QStringLiteral("exclamationmark.octagon.fill");
    }
    return {};
}

std::optional<QString> stateMessage(MenuBarPresentationState state)
{
    switch (state) {
    case MenuBarPresentationState::collecting:
        return kwText("正在采集系统状态");
    case MenuBarPresentationState::observing:
        return kwText("正在观察系统状态");
    case MenuBarPresentationState::normal:
        return kwText("当前未发现需要处理的持续高负载");
    case MenuBarPresentationState::highLoad:
    case MenuBarPresentationState::actionRecommended:
        break;
    }
    return std::nullopt;
}

QString menuTitle(MenuBarPresentationState state, const SystemMetricSample *sample)
{
    const QString title = stateTitle(state);
    if (state == MenuBarPresentationState::collecting || !sample)
        return title;
    const std::optional<double> &temperature = sample->temperatureCelsius.value();
    if (!temperature)
        return title;
    const QString reading = formatTemperature(*temperature) + QStringLiteral("°");
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
            return kwText("已持续 %1").arg(kwText("%1 分钟").arg(formatLocaleInteger(minutes)));
        }
    }
    return kwText("刚刚出现");
}

enum class MetricKind { cpu, temperature, fan };

MenuBarPresentationMetric makeMetric(MetricKind kind, const SystemMetricSample *sample)
{
    MenuBarPresentationMetric metric;
    SensorReading<double> reading; // no sample yet: warming up
    QString unit;
    int fractionDigits = 0;
    switch (kind) {
    case MetricKind::cpu:
        metric.id = QStringLiteral("cpu");
        metric.title = QStringLiteral("CPU");
        if (sample)
            reading = sample->cpuUsage;
        unit = QStringLiteral("%");
        break;
    case MetricKind::temperature:
        metric.id = QStringLiteral("temperature");
        metric.title = kwText("温度");
        if (sample)
            reading = sample->temperatureCelsius;
        unit = QStringLiteral("°C");
        fractionDigits = 1;
        break;
    case MetricKind::fan:
        metric.id = QStringLiteral("fan");
        metric.title = kwText("风扇");
        if (sample)
            reading = sample->fanRPM;
        unit = QStringLiteral(" RPM");
        break;
    }

    if (reading.readingCase() == SensorReadingCase::permissionDenied) {
        // The panel is narrow: show the short word, speak the full one.
        metric.value = kwText("受限");
        metric.accessibilityValue = reading.displayText(unit, fractionDigits);
    } else if (kind == MetricKind::temperature && reading.isAvailable()) {
        metric.value = formatTemperature(*reading.value()) + unit;
    } else {
        metric.value = reading.displayText(unit, fractionDigits);
    }
    return metric;
}

} // namespace

MenuBarPresentation pausedMenuBarPresentation()
{
    const QString paused = kwText("已暂停");
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
        .headline = stateHeadline(state),
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
                .cpuText = formatLocaleNumber(task.cpu, 0) + QStringLiteral("%"),
                .runningDuration = task.duration,
            };
        }
        ++attentionCount;
    }
    presentation.remainingAttentionTaskCount = attentionCount > 0 ? attentionCount - 1 : 0;
    return presentation;
}
