#include "presentation/app/DashboardCommandLine.h"
#include "presentation/shell/WindowPlacement.h"

#include <gtest/gtest.h>

namespace {

const QString kProgram = QStringLiteral("kilnwarden");

TEST(DashboardSizeOption, ParsesOrDropsSilently)
{
    const struct {
        QStringList values; // after "--dashboard-size"
        std::optional<QSizeF> size;
    } rows[] = {
        {{"800", "500"}, QSizeF(960, 640)}, // raised to the minimum
        {{"1200", "800"}, QSizeF(1200, 800)},
        {{"1300.5", "+900"}, QSizeF(1300.5, 900)},
        {{"1200"}, std::nullopt},
        {{"1200", "x"}, std::nullopt},
        {{" 1200", "800"}, std::nullopt},
        {{"1200px", "800"}, std::nullopt},
        {{"0", "900"}, std::nullopt},
        {{"-1200", "900"}, std::nullopt},
        {{"inf", "900"}, std::nullopt},
        {{"1200", "x", "--dashboard-size", "1300", "900"}, std::nullopt}, // the first one only
        // Beyond any integer geometry: cut, never converted as they stand.
        {{"1e300", "1e300"}, QSizeF(16384, 16384)},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.values.join(' ').toStdString());
        EXPECT_EQ(parseDashboardSize(QStringList{kProgram, "--dashboard-size"} + row.values),
                  row.size);
    }
    EXPECT_EQ(parseDashboardSize({kProgram, "--dashboard-page", "settings"}), std::nullopt);
}

TEST(DashboardPageOption, ExactSpellingOnly)
{
    const struct {
        QStringList arguments;
        DashboardSection section;
    } rows[] = {
        {{kProgram, "--dashboard-page", "settings"}, DashboardSection::settings},
        {{kProgram, "--dashboard-page", "Settings"}, DashboardSection::overview},
        {{kProgram, "--dashboard-page"}, DashboardSection::overview},
        {{kProgram}, DashboardSection::overview},
        {{kProgram, "--dashboard-page", "hardwareMonitor", "--dashboard-page", "settings"},
         DashboardSection::hardwareMonitor},
    };
    for (const auto &row : rows)
        EXPECT_EQ(parseDashboardPage(row.arguments), row.section)
            << row.arguments.join(' ').toStdString();
}

// The first content size: the default fills at most the screen; a requested
// size may pass a small screen, but not twice its size.
TEST(DashboardWindowPlacement, FirstSizeIsBoundedByTheScreen)
{
    const QSize laptop(1280, 800 - 27); // under a top bar
    const struct {
        std::optional<QSizeF> requested;
        std::optional<QSize> available;
        QSize size;
    } rows[] = {
        {std::nullopt, laptop, laptop},
        {std::nullopt, QSize(2560, 1400), QSize(1440, 900)},
        {std::nullopt, std::nullopt, QSize(1440, 900)},
        {QSizeF(1200, 800), QSize(1024, 700), QSize(1200, 800)},
        {QSizeF(1300.5, 900), laptop, QSize(1301, 900)},
        {QSizeF(16384, 16384), laptop, QSize(2560, 1546)},
        {QSizeF(16384, 16384), std::nullopt, QSize(2880, 1800)},
        {QSizeF(16384, 16384), QSize(200, 100), QSize(1440, 900)},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(initialDashboardContentSize(row.requested, row.available), row.size)
            << row.requested.value_or(QSizeF()).width();
    }
}

// The window manager's frame goes inside the available area too: the
// content gives up what the title bar takes.
TEST(DashboardWindowPlacement, TheWholeFrameFitsTheAvailableArea)
{
    const QRect screen(0, 0, 1280, 800);
    const QMargins titleBar(0, 19, 0, 0);
    const QSize minimum(960, 640);
    const struct {
        QRect content;
        QMargins frame;
        QRect available;
        QRect fitted;
    } rows[] = {
        {QRect(0, 0, 1280, 800), titleBar, screen, QRect(0, 19, 1280, 781)},
        {QRect(0, 0, 1280, 800), QMargins(4, 30, 4, 4), screen, QRect(4, 30, 1272, 766)},
        {QRect(100, 50, 1000, 700), titleBar, screen, QRect(100, 50, 1000, 700)},
        {QRect(0, 27, 1280, 773), titleBar, QRect(0, 27, 1280, 773), QRect(0, 46, 1280, 754)},
        // Never below the minimum: the title bar stays on screen, the bottom
        // goes past.
        {QRect(0, 0, 1000, 600), titleBar, QRect(0, 0, 1000, 600), QRect(0, 19, 1000, 640)},
    };
    for (const auto &row : rows)
        EXPECT_EQ(fitFrameInto(row.content, row.frame, row.available, minimum), row.fitted)
            << row.content.x() << "," << row.content.y();
}

TEST(DashboardCommand, HelpVersionOrOneUnknownOption)
{
    using enum DashboardCommand;
    const struct {
        QStringList arguments; // after the program name
        std::optional<DashboardCommand> command;
        QString error;
    } rows[] = {
        {{}, run, {}},
        {{"--dashboard-size", "1200", "800", "--dashboard-page", "settings"}, run, {}},
        {{"--dashboard-size", "-1", "--help"}, run, {}}, // wrong values, taken along
        {{"--dashboard-page"}, run, {}},
        {{"--help"}, help, {}},
        {{"-h", "--version"}, help, {}},
        {{"--version"}, version, {}},
        {{"--version", "--bogus"}, std::nullopt, "kilnwarden: unknown option '--bogus'"},
        {{"--dashboard-page", "settings", "settings"},
         std::nullopt,
         "kilnwarden: unknown option 'settings'"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.arguments.join(' ').toStdString());
        const DashboardCommandResult result = parseDashboardCommand(row.arguments);
        EXPECT_EQ(result.command, row.command);
        EXPECT_EQ(result.error, row.error);
    }
}

} // namespace
