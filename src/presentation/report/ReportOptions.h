#pragma once

#include <QString>
#include <QStringList>

#include <optional>

struct ReportOptions {
    int samples = 2;       // at least 1
    double interval = 2.0; // seconds between ticks, above 0
    bool json = false;
    bool help = false;

    bool operator==(const ReportOptions &) const = default;
};

struct ReportOptionsResult {
    std::optional<ReportOptions> options;
    QString error; // one line naming the wrong option, when `options` is absent
};

// Parses the arguments after the program name.
ReportOptionsResult parseReportOptions(const QStringList &arguments);

QString reportUsageLine();
