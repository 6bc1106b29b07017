// The application as it runs: the real composition root on this machine, and
// the real program started as a user would start it, twice.

#include "presentation/app/KilnWardenApplication.h"
#include "dashboard/DashboardStore.h"
#include "presentation/PresentationTesting.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/DashboardWindow.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(KilnWardenApplication, RunsLiveThroughEverySectionAndStops)
{
    KilnWardenApplication application(QStringList{"kilnwarden", "--dashboard-size", "1200", "800",
                                                  "--dashboard-page", "hardwareMonitor"});
    application.launch();
    DashboardWindow *window = application.dashboardWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->windowTitle(), u"KilnWarden"_s);
    EXPECT_EQ(window->size(), QSize(1200, 800));
    EXPECT_EQ(window->minimumSize(), QSize(960, 640));
    EXPECT_EQ(window->shell()->selectedSection(), DashboardSection::hardwareMonitor);
    EXPECT_TRUE(application.store().isMonitoring());

    // Two real ticks of this machine, with every page shown on the way.
    ASSERT_TRUE(
        waitFor([&] { return application.store().sampleHistory().samples().size() >= 2; }, 15000));
    for (const DashboardSection section : kAllDashboardSections) {
        window->shell()->setSelectedSection(section);
        waitFor([] { return false; }, 100);
        EXPECT_EQ(window->shell()->currentPage()->section(), section);
        EXPECT_FALSE(window->grab().isNull());
    }

    // Closing hides the window and stops nothing; showing brings the same one
    // back at its size and on its page.
    window->resize(1300, 850);
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(application.store().isMonitoring());
    application.showDashboardWindow();
    EXPECT_EQ(application.dashboardWindow(), window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->size(), QSize(1300, 850));
    EXPECT_EQ(window->shell()->selectedSection(), DashboardSection::settings);

    application.terminate();
    EXPECT_FALSE(application.store().isMonitoring());
}

// The program as installed: a second start shows the first one's window and
// leaves; a termination signal quits it cleanly through its event loop.
TEST(KilnWardenProgram, SecondStartHandsOverAndSignalQuitsCleanly)
{
    QTemporaryDir runtime;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);

    QProcess first;
    first.setProcessEnvironment(environment);
    first.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    first.start(QStringLiteral(KW_APP_BINARY), {});
    ASSERT_TRUE(first.waitForStarted(10000));
    const QString socket = runtime.filePath(u"kilnwarden.socket"_s);
    ASSERT_TRUE(waitFor([&] { return QFile::exists(socket); }, 30000));

    QProcess second;
    second.setProcessEnvironment(environment);
    second.start(QStringLiteral(KW_APP_BINARY), {u"--dashboard-page"_s, u"settings"_s});
    ASSERT_TRUE(second.waitForFinished(30000));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(first.state(), QProcess::Running);

    // SIGTERM to the process this test started, and to nothing else.
    first.terminate();
    ASSERT_TRUE(first.waitForFinished(30000));
    EXPECT_EQ(first.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(first.exitCode(), 0);
    EXPECT_FALSE(QFile::exists(socket));
}

} // namespace
