#include "presentation/app/DashboardCommandLine.h"

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
        {{"1200px", "800"}, std::nullopt},
        {{" 1200", "800"}, std::nullopt},
        {{"0", "900"}, std::nullopt},
        {{"-1200", "900"}, std::nullopt},
        {{"inf", "900"}, std::nullopt},
        {{"nan", "900"}, std::nullopt},
        {{"1200", "x", "--dashboard-size", "1300", "900"}, std::nullopt}, // the first one only
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
        {{kProgram, "--dashboard-page", "liveDiagnosis"}, DashboardSection::liveDiagnosis},
        {{kProgram, "--dashboard-page", "eventHistory"}, DashboardSection::eventHistory},
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

} // namespace
