// The application as it runs: the real composition root on this machine, and
// the real program started as a user would start it, twice.

#include "presentation/app/KilnWardenApplication.h"
#include "dashboard/DashboardStore.h"
#include "presentation/PresentationTesting.h"
#include "presentation/shell/DashboardShell.h"
#include "presentation/shell/DashboardWindow.h"
#include "support/FixtureTable.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(KilnWardenApplication, RunsLiveThroughEverySectionAndStops)
{
    KilnWardenApplication application(QStringList{"kilnwarden", "--dashboard-size", "1200", "800",
                                                  "--dashboard-page", "hardwareMonitor"});
    application.setTrayAvailability([] { return true; });
    application.launch();
    DashboardWindow *window = application.dashboardWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->size(), QSize(1200, 800));
    // Larger than the offscreen screen: its top-left corner stays on it.
    EXPECT_EQ(window->pos(), QGuiApplication::primaryScreen()->availableGeometry().topLeft());
    EXPECT_EQ(window->shell()->selectedSection(), DashboardSection::hardwareMonitor);
    EXPECT_TRUE(application.store().isMonitoring());

    // Two real ticks of this machine, with every page shown on the way.
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return application.store().sampleHistory().samples().size() >= 2; }, 15000));
    for (const DashboardSection section : kAllDashboardSections) {
        window->shell()->setSelectedSection(section);
        QTest::qWait(100);
        EXPECT_EQ(window->shell()->currentPage()->section(), section);
        EXPECT_FALSE(window->grab().isNull());
    }

    application.terminate();
    EXPECT_FALSE(application.store().isMonitoring());
}

// The program as installed: every later start shows the first one's window
// and leaves, so exactly one monitor runs however the starts interleave; a
// termination signal quits it cleanly through its event loop.
TEST(KilnWardenProgram, LaterStartsHandOverAndSignalQuitsCleanly)
{
    QTemporaryDir runtime;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);

    // The first start sees no font at all, so it says that Chinese cannot show.
    QFile noFonts(runtime.filePath(u"fonts.conf"_s));
    ASSERT_TRUE(noFonts.open(QIODevice::WriteOnly));
    noFonts.write("<?xml version=\"1.0\"?><fontconfig></fontconfig>\n");
    noFonts.close();
    QProcessEnvironment firstEnvironment = environment;
    firstEnvironment.insert(u"FONTCONFIG_FILE"_s, noFonts.fileName());

    QProcess first;
    first.setProcessEnvironment(firstEnvironment);
    first.start(QStringLiteral(KW_APP_BINARY), {});
    ASSERT_TRUE(first.waitForStarted(10000));
    const QString socket = runtime.filePath(u"kilnwarden.socket"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(socket); }, 30000));
    const auto inodeOf = [](const QString &path) {
        struct stat status {};
        return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
    };
    const ino_t listening = inodeOf(socket);

    constexpr int kStarts = 10;
    for (int start = 0; start < kStarts; ++start) {
        SCOPED_TRACE(start);
        QProcess later;
        later.setProcessEnvironment(environment);
        later.start(QStringLiteral(KW_APP_BINARY), {u"--dashboard-page"_s, u"settings"_s});
        ASSERT_TRUE(later.waitForFinished(30000));
        EXPECT_EQ(later.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(later.exitCode(), 0);
        EXPECT_EQ(first.state(), QProcess::Running);
        // The running program's socket, not one a later start put in its place.
        EXPECT_EQ(inodeOf(socket), listening);
    }

    // SIGTERM to the process this test started, and to nothing else.
    first.terminate();
    ASSERT_TRUE(first.waitForFinished(30000));
    EXPECT_EQ(first.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(first.exitCode(), 0);
    EXPECT_FALSE(QFile::exists(socket));
    const QStringList lines = QString::fromLocal8Bit(first.readAllStandardError())
                                  .split(u'\n', Qt::SkipEmptyParts)
                                  .filter(u"kilnwarden:"_s);
    EXPECT_EQ(lines, QStringList{u"kilnwarden: 未安装可显示中文的字体；请安装 fonts-noto-cjk"_s});
}

// What ends at once, before any window: the usage, the version, an unknown
// option, and a start without a display, which never aborts; in the session's
// language, Chinese by default, English with an English LANG.
TEST(KilnWardenProgram, EndsAtOnceWithOneClearAnswer)
{
    for (const FixtureRow &row : fixtureTable(u"program-early-exits"_s)) {
        SCOPED_TRACE(row.where);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(name);
        if (row.fields[1] != "unset")
            environment.insert(u"DISPLAY"_s, *row.text(1));
        if (!row.fields[2].isEmpty()) {
            for (const QString &name : {u"LC_ALL"_s, u"LC_MESSAGES"_s, u"LANGUAGE"_s})
                environment.remove(name);
            environment.insert(u"LANG"_s, *row.text(2));
        }
        QTemporaryDir runtime; // a start that got through would not meet a real one
        environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(KW_APP_BINARY),
                      row.fields[0].isEmpty() ? QStringList() : row.text(0)->split(u','));
        ASSERT_TRUE(program.waitForFinished(30000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        const int exitCode = row.fields[3].toInt();
        EXPECT_EQ(program.exitCode(), exitCode);
        const QString output = QString::fromLocal8Bit(program.readAllStandardOutput());
        const QStringList errors =
            QString::fromLocal8Bit(program.readAllStandardError()).split(u'\n');
        EXPECT_TRUE(output.startsWith(*row.text(4))) << output.toStdString();
        EXPECT_TRUE(errors.first().startsWith(*row.text(5))) << errors.first().toStdString();
        if (exitCode == 1) {
            EXPECT_EQ(errors.size(), 2); // one line and its newline
            EXPECT_TRUE(errors.first().contains(u"kilnwarden-report"_s));
        }
        if (exitCode == 2) {
            EXPECT_TRUE(errors.value(1).startsWith(u"用法：kilnwarden "_s));
        }
    }
}

} // namespace
