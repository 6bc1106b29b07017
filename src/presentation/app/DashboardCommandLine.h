#pragma once

#include "dashboard/DashboardModel.h"

#include <QSizeF>
#include <QStringList>

#include <optional>

// The window's two options. Neither prints anything or stops the program: a
// value that cannot be used is dropped and the default stands.

// `--dashboard-size <width> <height>`: the first occurrence only; both values
// whole decimal numbers, finite and above 0; raised to at least 960 by 640.
std::optional<QSizeF> parseDashboardSize(const QStringList &arguments);
// `--dashboard-page <section>`: one of "overview", "liveDiagnosis",
// "hardwareMonitor", "eventHistory", "settings", exactly; else the overview.
DashboardSection parseDashboardPage(const QStringList &arguments);
