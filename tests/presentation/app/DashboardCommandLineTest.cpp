#include "presentation/app/DashboardCommandLine.h"

#include <gtest/gtest.h>

namespace {

struct SizeCase {
    const char *name;
    QStringList arguments;
    std::optional<QSizeF> size;
};

class DashboardSizeOptionTest : public testing::TestWithParam<SizeCase> {};

TEST_P(DashboardSizeOptionTest, ParsesOrDropsSilently)
{
    const SizeCase &c = GetParam();
    EXPECT_EQ(parseDashboardSize(c.arguments), c.size);
}

const QString kProgram = QStringLiteral("kilnwarden");

INSTANTIATE_TEST_SUITE_P(
    Cases, DashboardSizeOptionTest,
    testing::Values(
        SizeCase{
            "raised_to_minimum", {kProgram, "--dashboard-size", "800", "500"}, QSizeF(960, 640)},
        SizeCase{
            "kept_when_larger", {kProgram, "--dashboard-size", "1200", "800"}, QSizeF(1200, 800)},
        SizeCase{
            "fractions", {kProgram, "--dashboard-size", "1300.5", "+900"}, QSizeF(1300.5, 900)},
        SizeCase{"missing_height", {kProgram, "--dashboard-size", "1200"}, std::nullopt},
        SizeCase{"not_a_number", {kProgram, "--dashboard-size", "1200", "x"}, std::nullopt},
        SizeCase{"trailing_text", {kProgram, "--dashboard-size", "1200px", "800"}, std::nullopt},
        SizeCase{"leading_blank", {kProgram, "--dashboard-size", " 1200", "800"}, std::nullopt},
        SizeCase{"zero", {kProgram, "--dashboard-size", "0", "900"}, std::nullopt},
        SizeCase{"negative", {kProgram, "--dashboard-size", "-1200", "900"}, std::nullopt},
        SizeCase{"infinite", {kProgram, "--dashboard-size", "inf", "900"}, std::nullopt},
        SizeCase{"nan", {kProgram, "--dashboard-size", "nan", "900"}, std::nullopt},
        SizeCase{"first_occurrence_only",
                 {kProgram, "--dashboard-size", "1200", "x", "--dashboard-size", "1300", "900"},
                 std::nullopt},
        SizeCase{"absent", {kProgram, "--dashboard-page", "settings"}, std::nullopt}),
    [](const testing::TestParamInfo<SizeCase> &info) { return std::string(info.param.name); });

TEST(DashboardPageOption, ExactSpellingOnly)
{
    struct Row {
        QStringList arguments;
        DashboardSection section;
    };
    const Row rows[] = {
        {{kProgram, "--dashboard-page", "settings"}, DashboardSection::settings},
        {{kProgram, "--dashboard-page", "liveDiagnosis"}, DashboardSection::liveDiagnosis},
        {{kProgram, "--dashboard-page", "eventHistory"}, DashboardSection::eventHistory},
        {{kProgram, "--dashboard-page", "Settings"}, DashboardSection::overview},
        {{kProgram, "--dashboard-page"}, DashboardSection::overview},
        {{kProgram}, DashboardSection::overview},
        {{kProgram, "--dashboard-page", "hardwareMonitor", "--dashboard-page", "settings"},
         DashboardSection::hardwareMonitor},
    };
    for (const Row &row : rows)
        EXPECT_EQ(parseDashboardPage(row.arguments), row.section)
            << row.arguments.join(' ').toStdString();
}

} // namespace
