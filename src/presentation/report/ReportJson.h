#pragma once

#include "dashboard/DashboardStore.h"

#include <QJsonObject>
#include <QJsonValue>

#include <cstdio>

// The report as JSON: field names and enumeration case names exactly as the
// records and enumerations name them in the code. One object: "samples", every
// sample in the order taken, then what the dashboard derived from the last.
//
// The samples are written as they arrive and never kept, so a report of any
// number of samples runs in the memory of one.
class ReportJsonStream {
public:
    explicit ReportJsonStream(std::FILE *output);
    void addSample(const SystemMetricSample &sample);
    // Closes the object with the store's state; call once, after the last sample.
    void finish(const DashboardStore &store);

private:
    void write(QByteArrayView bytes);

    std::FILE *m_output;
    long long m_sampleCount = 0;
};

// The dashboard's state: the report's members after "samples".
QJsonObject reportStateJson(const DashboardStore &store);

// `object` as compact JSON whose strings escape every character that
// printableText would replace, the C0 controls included.
QByteArray compactJson(const QJsonObject &object);

QJsonObject sampleJson(const SystemMetricSample &sample);
QJsonObject processMetricJson(const ProcessMetric &process);
QJsonValue optionalJson(const std::optional<QString> &text);
QJsonValue optionalJson(const std::optional<double> &number);
QJsonValue timePointJson(TimePoint time);
QJsonObject menuBarPresentationJson(const MenuBarPresentation &presentation);
QJsonObject incidentJson(const DashboardIncident &incident);
