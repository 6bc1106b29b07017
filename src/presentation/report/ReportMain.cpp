// kilnwarden-report: drives the real store and sampler headless for a few
// samples and prints what the dashboard would show, as a table or as JSON.

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"
#include "presentation/report/ReportJson.h"
#include "presentation/report/ReportOptions.h"
#include "presentation/report/ReportText.h"
#include "sampling/InterfaceLanguage.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    installInterfaceLanguage();
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
    // No sample is kept: the JSON writes each one as it arrives, and the text
    // shows the last, which the store holds, and the count.
    ReportJsonStream json(stdout);
    long long taken = 0;
    QObject::connect(&store, &DashboardStore::sampleHistoryChanged, &app, [&] {
        if (const auto &sample = store.latestSystemSample()) {
            ++taken;
            if (options.json)
                json.addSample(*sample);
        }
        if (taken >= options.samples) {
            store.stopMonitoring();
            app.quit();
        }
    });
    store.startMonitoring();
    app.exec();

    if (options.json) {
        json.finish(store);
    } else {
        const QByteArray text = reportText(store, taken).toUtf8();
        std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    }
    return 0;
}
