#pragma once

#include "dashboard/DashboardStore.h"

#include <QJsonObject>
#include <QJsonValue>

#include <vector>

// The report as JSON: field names and enumeration case names exactly as the
// records and enumerations name them in the code.
QJsonObject reportJson(const DashboardStore &store, const std::vector<SystemMetricSample> &samples);

QJsonObject sampleJson(const SystemMetricSample &sample);
QJsonObject processMetricJson(const ProcessMetric &process);
QJsonValue optionalJson(const std::optional<QString> &text);
QJsonValue optionalJson(const std::optional<double> &number);
QJsonValue timePointJson(TimePoint time);
QJsonObject menuBarPresentationJson(const MenuBarPresentation &presentation);
QJsonObject incidentJson(const DashboardIncident &incident);
