// kilnwarden-report: drives the real store and sampler headless for a few
// samples and prints what the dashboard would show, as a table or as JSON.

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"
#include "presentation/report/ReportJson.h"
#include "presentation/report/ReportOptions.h"
#include "presentation/report/ReportText.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QStringList arguments = app.arguments();
    arguments.removeFirst();
    const ReportOptionsResult parsed = parseReportOptions(arguments);
    if (!parsed.options) {
        std::fprintf(stderr, "%s\n%s\n", qPrintable(parsed.error), qPrintable(reportUsageLine()));
        return 2;
    }
    const ReportOptions options = *parsed.options;
    if (options.help) {
        std::printf("%s\n", qPrintable(reportUsageLine()));
        return 0;
    }

    DashboardStore store(LiveSystemMonitor(makeSystemMetricSampler(), options.interval),
                         makeProcessTerminationController());
    // The history keeps readings only, so the report keeps its own copies of
    // the whole samples, processes included.
    std::vector<SystemMetricSample> samples;
    QObject::connect(&store, &DashboardStore::sampleHistoryChanged, &app, [&] {
        if (store.latestSystemSample())
            samples.push_back(*store.latestSystemSample());
        if (static_cast<int>(samples.size()) >= options.samples) {
            store.stopMonitoring();
            app.quit();
        }
    });
    store.startMonitoring();
    app.exec();

    if (options.json) {
        const QByteArray json =
            QJsonDocument(reportJson(store, samples)).toJson(QJsonDocument::Compact);
        std::fwrite(json.constData(), 1, static_cast<std::size_t>(json.size()), stdout);
        std::fputc('\n', stdout);
    } else {
        const QByteArray text = reportText(store, samples).toUtf8();
        std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    }
    return 0;
}
