#pragma once

#include "presentation/shell/DashboardSection.h"

#include <QSizeF>
#include <QStringList>

#include <optional>

// The window's two options. Neither prints anything or stops the program: a
// value that cannot be used is dropped and the default stands. Besides them,
// the program knows only --help (-h) and --version.

enum class DashboardCommand { run, help, version };

struct DashboardCommandResult {
    std::optional<DashboardCommand> command;
    QString error; // one line naming the unknown argument, when `command` is absent

    bool operator==(const DashboardCommandResult &) const = default;
};

// Parses the arguments after the program name. The window options take their
// values with them, whatever those are: `--dashboard-size -1 x` is a wrong
// value (ignored), not two unknown options.
DashboardCommandResult parseDashboardCommand(const QStringList &arguments);
QString dashboardUsageText();

// The largest side --dashboard-size can ask for before the screen bounds it:
// far beyond any screen, and small enough for any integer geometry.
inline constexpr double kLargestDashboardSide = 16384.0;

// `--dashboard-size <width> <height>`: the first occurrence only; both values
// whole decimal numbers, finite and above 0; raised to at least 960 by 640
// and cut to kLargestDashboardSide.
std::optional<QSizeF> parseDashboardSize(const QStringList &arguments);
// `--dashboard-page <section>`: one of "overview", "liveDiagnosis",
// "hardwareMonitor", "eventHistory", "settings", exactly; else the overview.
DashboardSection parseDashboardPage(const QStringList &arguments);
