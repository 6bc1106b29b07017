// kilnwarden: the dashboard window and its live monitor.

#include "platform/ApplicationInstanceChannel.h"
#include "platform/QuitSignalWatcher.h"
#include "presentation/app/KilnWardenApplication.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/kit/DashboardScrollBarStyle.h"
#include "presentation/kit/KilnWardenMark.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KilnWarden"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    QApplication::setDesktopFileName(QStringLiteral("kilnwarden"));
    // Closing the window hides it; sampling, incidents and verification go on.
    QApplication::setQuitOnLastWindowClosed(false);

    // A second start shows the running program's window and leaves.
    ApplicationInstanceChannel instance(ApplicationInstanceChannel::defaultSocketPath());
    if (instance.claim() == ApplicationInstanceChannel::Claim::forwarded)
        return 0;

    QApplication::setWindowIcon(kilnWardenApplicationIcon());
    installDashboardScrollBarStyle();
    installDashboardApplicationFont();
    installDashboardAccessibility();

    KilnWardenApplication kilnWarden(QApplication::arguments());
    QObject::connect(&instance, &ApplicationInstanceChannel::showRequested, &kilnWarden,
                     &KilnWardenApplication::showDashboardWindow);
    QuitSignalWatcher quitSignals;
    QObject::connect(&quitSignals, &QuitSignalWatcher::quitRequested, &app, &QApplication::quit);
    QObject::connect(&app, &QApplication::aboutToQuit, &kilnWarden,
                     &KilnWardenApplication::terminate);

    kilnWarden.launch();
    return QApplication::exec();
}
