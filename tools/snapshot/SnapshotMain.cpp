// kilnwarden-snapshot: renders every page of the dashboard window at the three
// size classes into PNG files, from a scripted store (the same pictures on
// every run), from an empty store, or from this machine.
//
//   kilnwarden-snapshot [--out DIR] [--source scripted|empty|live]
//                       [--live-seconds N] [--pages overview,settings,...]
//                       [--press hardware-tab-cpu]
//                       [--sizes 960x640,1200x800,1440x900] [--panels]
//                       [--check-layout] [--language zh_CN|en]
//
// `--panels` renders the tray panel instead of the pages: every state of the
// menu bar, light and dark side by side, into one picture.
//
// `--check-layout` renders nothing: it looks over each page at each size (by
// default the sizes of common Linux screens) and prints one line per finding
// (cut, hidden scrolling, misaligned columns, small text, overlaps), exiting 1
// if there is any.
//
// `--language` picks the interface's language; without it the session's
// languages (LANGUAGE, LC_ALL, LANG) decide, as for the program itself.
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.

#include "dashboard/DashboardStore.h"
#include "platform/PlatformFactory.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/kit/DashboardScrollBarStyle.h"
#include "sampling/InterfaceLanguage.h"
#include "snapshot/DashboardSnapshot.h"
#include "snapshot/LayoutCheck.h"
#include "snapshot/MenuBarPanelGallery.h"
#include "snapshot/ScriptedStore.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <optional>

namespace {

// Every option the tool knows: those followed by a value, then the flags.
const QStringList kValueOptions = {"--out",   "--source", "--live-seconds", "--pages",
                                   "--press", "--sizes",  "--language"};
const QStringList kFlagOptions = {"--panels", "--check-layout"};

constexpr char kUsage[] =
    "usage: kilnwarden-snapshot [--out DIR] [--source scripted|empty|live] [--live-seconds N]\n"
    "                           [--pages overview,settings,...] [--press IDENTIFIER]\n"
    "                           [--sizes 960x640,1200x800,1440x900] [--panels] [--check-layout]\n"
    "                           [--language zh_CN|en]\n"
    "       kilnwarden-snapshot --help | --version";

// The first argument that is no option of the tool, or none.
std::optional<QString> unknownArgument(int argc, char **argv)
{
    for (int index = 1; index < argc; ++index) {
        const QString argument = QString::fromLocal8Bit(argv[index]);
        if (kValueOptions.contains(argument))
            ++index;
        else if (!kFlagOptions.contains(argument) && argument != QLatin1String("--help") &&
                 argument != QLatin1String("-h") && argument != QLatin1String("--version"))
            return argument;
    }
    return std::nullopt;
}

bool hasArgument(int argc, char **argv, std::initializer_list<const char *> names)
{
    for (int index = 1; index < argc; ++index) {
        if (kValueOptions.contains(QString::fromLocal8Bit(argv[index]))) {
            ++index;
            continue;
        }
        for (const char *name : names)
            if (std::strcmp(argv[index], name) == 0)
                return true;
    }
    return false;
}

QString valueAfter(const QStringList &arguments, const QString &option, const QString &fallback)
{
    const qsizetype index = arguments.indexOf(option);
    return index >= 0 && index + 1 < arguments.size() ? arguments[index + 1] : fallback;
}

} // namespace

int main(int argc, char **argv)
{
    if (const std::optional<QString> unknown = unknownArgument(argc, argv)) {
        std::fprintf(stderr, "kilnwarden-snapshot: unknown option '%s'\n%s\n", qPrintable(*unknown),
                     kUsage);
        return 2;
    }
    if (hasArgument(argc, argv, {"--help", "-h"})) {
        std::printf("%s\n", kUsage);
        return 0;
    }
    if (hasArgument(argc, argv, {"--version"})) {
        std::printf("kilnwarden-snapshot 1.0\n");
        return 0;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    std::optional<InterfaceLanguage> language;
    if (arguments.contains(QStringLiteral("--language"))) {
        const QString name = valueAfter(arguments, QStringLiteral("--language"), QString());
        if (!(language = interfaceLanguageFromText(name))) {
            std::fprintf(stderr, "unknown language: %s\n", qPrintable(name));
            return 2;
        }
    }
    installInterfaceLanguage(language);
    installDashboardScrollBarStyle();
    installDashboardApplicationFont();
    installDashboardAccessibility();

    const QString outDirectory =
        valueAfter(arguments, QStringLiteral("--out"), QStringLiteral("snapshots"));
    const QString source =
        valueAfter(arguments, QStringLiteral("--source"), QStringLiteral("scripted"));
    // The scripted stores run on a fixed clock; with the zone pinned too, their
    // pictures are the same under every TZ (and, the formats being the
    // interface's, under every LANG). Live pictures keep the user's zone.
    if (source != QLatin1String("live")) {
        qputenv("TZ", "UTC");
        tzset();
    }
    const QStringList pageNames =
        valueAfter(arguments, QStringLiteral("--pages"),
                   QStringLiteral("overview,liveDiagnosis,hardwareMonitor,eventHistory,settings"))
            .split(QLatin1Char(','), Qt::SkipEmptyParts);
    const bool checksLayout = arguments.contains(QStringLiteral("--check-layout"));
    const QString defaultSizes =
        checksLayout ? QStringLiteral("960x640,1119x760,1200x800,1366x700,1366x768,1410x900,"
                                      "1440x760,1440x900")
                     : QStringLiteral("960x640,1200x800,1440x900");
    const QStringList sizeNames = valueAfter(arguments, QStringLiteral("--sizes"), defaultSizes)
                                      .split(QLatin1Char(','), Qt::SkipEmptyParts);
    // A button to click before each picture (a tab, say), by its identifier.
    const QString press = valueAfter(arguments, QStringLiteral("--press"), QString());
    if (!checksLayout)
        QDir().mkpath(outDirectory);

    std::unique_ptr<ScriptedStore> scripted;
    std::unique_ptr<EmptyScriptedStore> empty;
    std::unique_ptr<DashboardStore> live;
    DashboardStore *store = nullptr;
    if (source == QLatin1String("live")) {
        live = std::make_unique<DashboardStore>(LiveSystemMonitor(makeSystemMetricSampler(), 2.0),
                                                makeProcessTerminationController());
        live->startMonitoring();
        const int seconds =
            valueAfter(arguments, QStringLiteral("--live-seconds"), QStringLiteral("7")).toInt();
        settleEvents(std::max(1, seconds) * 1000);
        store = live.get();
    } else if (source == QLatin1String("empty")) {
        empty = std::make_unique<EmptyScriptedStore>();
        store = &empty->store();
    } else {
        scripted = std::make_unique<ScriptedStore>();
        store = &scripted->store();
    }

    if (arguments.contains(QStringLiteral("--panels"))) {
        const QString path = QStringLiteral("%1/%2-menubar-panels.png").arg(outDirectory, source);
        const QImage gallery = renderMenuBarPanelGallery(menuBarPanelGalleryEntries(*store));
        if (live)
            live->stopMonitoring();
        if (!gallery.save(path)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
            return 1;
        }
        std::printf("%s\n", qPrintable(path));
        const QString iconPath =
            QStringLiteral("%1/%2-menubar-icons.png").arg(outDirectory, source);
        if (!renderMenuBarIconGallery().save(iconPath)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(iconPath));
            return 1;
        }
        std::printf("%s\n", qPrintable(iconPath));
        return 0;
    }

    int written = 0;
    int findings = 0;
    for (const QString &pageName : pageNames) {
        const std::optional<DashboardSection> section = dashboardSectionFromText(pageName);
        if (!section) {
            std::fprintf(stderr, "unknown page: %s\n", qPrintable(pageName));
            return 2;
        }
        for (const QString &sizeName : sizeNames) {
            const QStringList parts = sizeName.split(QLatin1Char('x'));
            if (parts.size() != 2 || parts[0].toInt() <= 0 || parts[1].toInt() <= 0) {
                std::fprintf(stderr, "bad size: %s\n", qPrintable(sizeName));
                return 2;
            }
            const QSize size(parts[0].toInt(), parts[1].toInt());
            if (checksLayout) {
                for (const QString &finding : checkDashboardLayout(*store, *section, size)) {
                    std::printf("%s %s %s: %s\n", qPrintable(pageName), qPrintable(sizeName),
                                qPrintable(source), qPrintable(finding));
                    ++findings;
                }
                ++written;
                continue;
            }
            QElapsedTimer timer;
            timer.start();
            const QImage image = renderDashboardSnapshot(*store, *section, size, press);
            const QString pressed = press.isEmpty() ? QString() : QLatin1Char('-') + press;
            const QString path = QStringLiteral("%1/%2-%3%4-%5.png")
                                     .arg(outDirectory, source, pageName, pressed, sizeName);
            if (!image.save(path)) {
                std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
                return 1;
            }
            std::printf("%s (%lld ms)\n", qPrintable(path),
                        static_cast<long long>(timer.elapsed()));
            ++written;
        }
    }
    if (live)
        live->stopMonitoring();
    return written > 0 && findings == 0 ? 0 : 1;
}
