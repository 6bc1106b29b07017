#include "process/CommandRedaction.h"
#include "support/FixtureTable.h"
#include "support/ProcessPrinting.h"

#include <gtest/gtest.h>

namespace {

// Each field of `row` from `first` on.
QStringList textsFrom(const FixtureRow &row, std::size_t first)
{
    QStringList texts;
    for (std::size_t index = first; index < row.fields.size(); ++index)
        texts << *row.text(index);
    return texts;
}

TEST(RedactedCommandTest, KeepsOnlyExecutableNameAndOneTableWord)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("redacted-commands")))
        EXPECT_EQ(redactedCommandText(*row.text(0), textsFrom(row, 2)), *row.text(1)) << row.where;
}

TEST(ProjectTest, NamesTheLastMeaningfulComponent)
{
    EXPECT_EQ(projectOfWorkingDirectory(std::nullopt, {}), std::nullopt);
    EXPECT_EQ(projectOfWorkingDirectory(QString(), {}), std::nullopt);
    for (const FixtureRow &row : fixtureTable(QStringLiteral("working-directory-projects"))) {
        const QString project = *row.text(0);
        EXPECT_EQ(projectOfWorkingDirectory(row.text(1), textsFrom(row, 2)),
                  project.isEmpty() ? std::nullopt : std::optional(project))
            << row.where;
    }
}

TEST(RedactedCommandSummaryTest, KeepsNoArgumentOrDirectoryText)
{
    QStringList arguments{"npm", "TEST", "--token=abc123"};
    std::optional<QString> directory = QString("/home/x/work/kiln");
    const RedactedCommandSummary summary{redactedCommandText("/usr/bin/npm", arguments),
                                         projectOfWorkingDirectory(directory)};
    EXPECT_EQ(summary, (RedactedCommandSummary{"npm test", QString("kiln")}));

    // Neither text shares storage with the raw input: overwriting the input
    // in place leaves the summary unchanged.
    arguments[1].fill(QLatin1Char('#'));
    directory->fill(QLatin1Char('#'));
    EXPECT_EQ(summary, (RedactedCommandSummary{"npm test", QString("kiln")}));
}

} // namespace
