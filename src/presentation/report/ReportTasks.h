#pragma once

#include "dashboard/DashboardStore.h"

#include <QJsonObject>
#include <QString>

// The report's load-source parts: the ranked sources of the last sample and
// the selection, as text and as JSON.

// A table of the ranked sources, a table of their diagnoses, and the
// selected task; a line saying why when there are none yet.
QString loadSourcesSection(const DashboardStore &store);

// Adds "allTasks" (every field, process trees included), "liveTasks" (ids),
// "selectedTaskID" and "selectedProcessID" to `report`.
void addLoadSourcesJson(QJsonObject &report, const DashboardStore &store);

QJsonObject taskJson(const DashboardTask &task);
QJsonObject processNodeJson(const DashboardProcessNode &node);
