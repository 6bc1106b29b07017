#include "presentation/app/DashboardCommandLine.h"
#include "presentation/shell/WindowPlacement.h"
#include "support/FixtureTable.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

constexpr const char *kCommandNames[] = {"run", "help", "version"}; // in declaration order

// Each option is read from the first place it is given, exactly as spelled;
// a wrong size is dropped without a word, an unknown option stops the start.
TEST(DashboardCommandLine, CommandPageAndSizeOfEachCommandLine)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("dashboard-command-lines"))) {
        const QStringList arguments =
            row.text(0)->isEmpty() ? QStringList() : row.text(0)->split(QLatin1Char(','));
        const DashboardCommandResult result = parseDashboardCommand(arguments);
        EXPECT_EQ(result.command ? kCommandNames[int(*result.command)] : "-", row.fields[1])
            << row.where;
        EXPECT_EQ(result.error, row.text(2).value_or(QString())) << row.where;
        const QStringList command = QStringList{QStringLiteral("kilnwarden")} + arguments;
        EXPECT_EQ(dashboardSectionText(parseDashboardPage(command)), *row.text(3)) << row.where;
        const std::optional<QSizeF> size = parseDashboardSize(command);
        EXPECT_EQ(size ? u"%1 %2"_s.arg(size->width()).arg(size->height()) : u"-"_s, *row.text(4))
            << row.where;
    }
}

TEST(DashboardWindowPlacement, FirstSizeAndFrameFitTheScreen)
{
    const auto numbers = [](const QByteArray &field) {
        QList<double> values;
        for (const QByteArray &value : field.split(' '))
            values << value.toDouble();
        return values;
    };
    const auto rect = [](const QList<double> &v) { return QRect(v[0], v[1], v[2], v[3]); };
    for (const FixtureRow &row : fixtureTable(QStringLiteral("dashboard-window-placements"))) {
        const QList<double> a = numbers(row.fields[1]), b = numbers(row.fields[2]),
                            c = numbers(row.fields[3]);
        if (row.fields[0] == "first") {
            EXPECT_EQ(initialDashboardContentSize(
                          row.fields[1] == "-" ? std::nullopt : std::optional(QSizeF(a[0], a[1])),
                          row.fields[2] == "-" ? std::nullopt : std::optional(QSize(b[0], b[1]))),
                      QSize(c[0], c[1]))
                << row.where;
        } else {
            EXPECT_EQ(
                fitFrameInto(rect(a), QMargins(b[0], b[1], b[2], b[3]), rect(c), QSize(960, 640)),
                rect(numbers(row.fields[4])))
                << row.where;
        }
    }
}

} // namespace
