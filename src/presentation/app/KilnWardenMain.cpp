// kilnwarden: the dashboard window and its live monitor.

#include "platform/ApplicationInstanceChannel.h"
#include "platform/DisplayConnection.h"
#include "platform/QuitSignalWatcher.h"
#include "presentation/app/DashboardCommandLine.h"
#include "presentation/app/KilnWardenApplication.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/kit/DashboardScrollBarStyle.h"
#include "presentation/kit/KilnWardenMark.h"
#include "sampling/InterfaceLanguage.h"

#include <QApplication>
#include <QFontDatabase>

#include <cstdio>
#include <memory>

namespace {

// Qt aborts the process when its platform cannot reach a display, so the
// question is asked first. Platforms without a display (offscreen, vnc, ...)
// named in QT_QPA_PLATFORM need none. With only Wayland reachable and no
// platform named, Wayland is named, as Qt would otherwise try X11 first.
// `x11` keeps the X connection open until Qt has its own.
bool prepareDisplay(std::shared_ptr<void> &x11)
{
    const QByteArray wayland = qgetenv("WAYLAND_DISPLAY");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    const QByteArray display = qgetenv("DISPLAY");
    const QByteArray platforms = qgetenv("QT_QPA_PLATFORM");
    if (platforms.isEmpty()) {
        if ((x11 = connectX11Display(display)))
            return true;
        if (!isWaylandDisplayReachable(wayland, runtime))
            return false;
        qputenv("QT_QPA_PLATFORM", "wayland");
        return true;
    }
    // Qt tries the platforms of a ";"-separated list in order.
    for (const QByteArray &platform : platforms.split(';')) {
        const QByteArray name = platform.split(':').first().trimmed();
        if (name == "xcb"                ? bool(x11 = connectX11Display(display))
            : name.startsWith("wayland") ? isWaylandDisplayReachable(wayland, runtime)
                                         : !name.isEmpty())
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    // Read before the toolkit starts, so that --help works without a display.
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments << QString::fromLocal8Bit(argv[index]);
    const DashboardCommandResult command = parseDashboardCommand(arguments);
    if (!command.command) {
        std::fprintf(stderr, "%s\n%s\n", qPrintable(command.error),
                     qPrintable(dashboardUsageText()));
        return 2;
    }
    if (*command.command == DashboardCommand::help) {
        std::printf("%s\n", qPrintable(dashboardUsageText()));
        return 0;
    }
    if (*command.command == DashboardCommand::version) {
        std::printf("kilnwarden 1.0\n");
        return 0;
    }
    std::shared_ptr<void> x11;
    if (!prepareDisplay(x11)) {
        std::fprintf(
            stderr, "%s\n",
            qPrintable(TerminalText::translate(
                "KilnWardenMain", "kilnwarden: 没有可用的显示（DISPLAY 或 WAYLAND_DISPLAY）；"
                                  "kilnwarden-report 可在终端中显示同样的诊断")));
        return 1;
    }

    QApplication app(argc, argv);
    const InterfaceLanguage language = installInterfaceLanguage();
    x11.reset();
    QApplication::setApplicationName(QStringLiteral("KilnWarden"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    QApplication::setDesktopFileName(QStringLiteral("kilnwarden"));
    // The application decides what closing the window means: hiding it while
    // a tray icon leads back to it, quitting otherwise.
    QApplication::setQuitOnLastWindowClosed(false);

    // A second start shows the running program's window and leaves.
    ApplicationInstanceChannel instance(ApplicationInstanceChannel::defaultSocketPath());
    switch (instance.claim()) {
    case ApplicationInstanceChannel::Claim::forwarded:
        return 0;
    case ApplicationInstanceChannel::Claim::untrusted:
        // Someone else's socket at our path: neither talked to nor removed.
        std::fprintf(
            stderr, "%s\n",
            qPrintable(TerminalText::translate("KilnWardenMain",
                                               "kilnwarden: %1 属于其他用户或对他人开放；不启动"
                                               "（请将 XDG_RUNTIME_DIR 设为你自己的运行时目录）")
                           .arg(instance.socketPath())));
        return 1;
    case ApplicationInstanceChannel::Claim::primary:
    case ApplicationInstanceChannel::Claim::alone:
        break;
    }

    // Every text is Chinese: without a font for it, each is a row of boxes.
    if (language == InterfaceLanguage::simplifiedChinese &&
        QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty())
        std::fprintf(
            stderr, "%s\n",
            qPrintable(TerminalText::translate(
                "KilnWardenMain", "kilnwarden: 未安装可显示中文的字体；请安装 fonts-noto-cjk")));

    QApplication::setWindowIcon(kilnWardenApplicationIcon());
    installDashboardScrollBarStyle();
    installDashboardApplicationFont();
    installDashboardAccessibility();

    KilnWardenApplication kilnWarden(QApplication::arguments());
    QObject::connect(&instance, &ApplicationInstanceChannel::showRequested, &kilnWarden,
                     &KilnWardenApplication::showDashboardWindow);
    // Queued: the click or key that asked finishes before the event loop ends.
    QObject::connect(&kilnWarden, &KilnWardenApplication::quitRequested, &app, &QApplication::quit,
                     Qt::QueuedConnection);
    QuitSignalWatcher quitSignals;
    QObject::connect(&quitSignals, &QuitSignalWatcher::quitRequested, &app, &QApplication::quit);
    QObject::connect(&app, &QApplication::aboutToQuit, &kilnWarden,
                     &KilnWardenApplication::terminate);

    kilnWarden.launch();
    return QApplication::exec();
}
