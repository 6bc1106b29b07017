#pragma once

#include "dashboard/DashboardModel.h"
#include "sampling/SystemMetricSample.h"
#include "sampling/TimePoint.h"

#include <QString>

#include <optional>
#include <vector>

// Everything the menu bar item and its panel show, as one value computed from
// the latest sample, the task list and the time the machine turned abnormal.
// Pure, so that the label and the panel can never disagree.

// The last two are the abnormal states.
enum class MenuBarPresentationState { collecting, observing, normal, highLoad, actionRecommended };
QString menuBarPresentationStateName(MenuBarPresentationState state);
constexpr bool isAbnormalMenuBarState(MenuBarPresentationState state)
{
    return state == MenuBarPresentationState::highLoad ||
           state == MenuBarPresentationState::actionRecommended;
}

// Everything fixed about a state, one row each. The texts are source texts
// for menuBarStateText; the symbol names are the symbol painter's.
struct MenuBarStateInfo {
    MenuBarPresentationState key;
    const char *name;        // "collecting", ...: the report's word
    const char *title;       // the menu title without a temperature
    const char *headline;    // the panel's first line
    const char *symbolName;  // beside the headline
    const char *message;     // the panel's message row; null: none (abnormal: the task instead)
    const char *spokenTitle; // the tray label as spoken, %1 the menu title
};
const MenuBarStateInfo &menuBarStateInfo(MenuBarPresentationState state);
// One of a state row's texts in the interface's language.
QString menuBarStateText(const char *text);

// Inclusive; high load uses the shared heat test's 75 °C and 30 %.
inline constexpr double kActionRecommendedTemperatureCelsius = 90.0;
// An abnormal state younger than this is "just appeared".
inline constexpr double kMenuBarDurationStartSeconds = 60.0;

struct MenuBarPresentationMetric {
    QString id; // "cpu", "temperature" or "fan"
    QString title;
    QString value;
    std::optional<QString> accessibilityValue; // spoken where it differs from `value`

    bool operator==(const MenuBarPresentationMetric &) const = default;
};

struct MenuBarPresentationTask {
    QString application;
    QString cpuText; // whole percent in the current locale, then "%"
    QString runningDuration;

    bool operator==(const MenuBarPresentationTask &) const = default;
};

struct MenuBarPresentation {
    MenuBarPresentationState state = MenuBarPresentationState::collecting;
    QString menuTitle;
    QString headline;
    std::optional<QString> durationText;
    QString symbolName;
    MenuBarPresentationMetric cpu;
    MenuBarPresentationMetric temperature;
    MenuBarPresentationMetric fan;
    std::optional<QString> statusMessage;
    std::optional<MenuBarPresentationTask> primaryTask;
    qint64 remainingAttentionTaskCount = 0;

    bool operator==(const MenuBarPresentation &) const = default;
};

// The state from the present sample alone (null: none yet) and the CPU of
// the first task. High load is decided by isSampleHot, the incident log's
// test, after the system's serious pressure or 90 °C have claimed
// `actionRecommended`.
MenuBarPresentationState menuBarState(const SystemMetricSample *sample,
                                      std::optional<double> topTaskCPU);

// `sample` is the store's latest (null: none yet), `tasks` all of its tasks
// in ranked order, `abnormalStartedAt` when the abnormal state began.
MenuBarPresentation makePresentation(const SystemMetricSample *sample,
                                     const std::vector<DashboardTask> &tasks,
                                     std::optional<TimePoint> abnormalStartedAt);

// While monitoring is paused: the header's "已暂停" as title and headline, and
// no figure, since the last sample grows older with every second. The state
// is `collecting`, the one that reads no machine state.
MenuBarPresentation pausedMenuBarPresentation();

// Whole degrees in the current locale, except just below the 75 and 90
// thresholds, where the value is cut to one decimal so that the display never
// shows a threshold that hasn't been reached (74.96 reads 74.9, not 75).
QString formatTemperature(double celsius);
