#include "process/CommandRedaction.h"
#include "support/ProcessPrinting.h"

#include "support/RowName.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct CommandCase {
    const char *description;
    QString executablePath;
    QStringList arguments;
    QString expected;
};

using rows::PrintTo;

class RedactedCommandTest : public testing::TestWithParam<CommandCase> {};

TEST_P(RedactedCommandTest, KeepsOnlyExecutableNameAndOneTableWord)
{
    const CommandCase &row = GetParam();
    EXPECT_EQ(redactedCommandText(row.executablePath, row.arguments), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, RedactedCommandTest,
    testing::Values(
        CommandCase{"no arguments", "/usr/bin/node", {}, "node"},
        CommandCase{"argv0 alone", "/usr/bin/node", {"node"}, "node"},
        CommandCase{
            "no table word drops everything",
            "/usr/bin/node",
            {"node", "/home/a/proj/node_modules/.bin/vite", "--port", "3000", "--token", "abc"},
            "node"},
        CommandCase{"first table word wins, lower-cased",
                    "/usr/bin/npm",
                    {"npm", "RUN", "dev", "--secret=x"},
                    "npm run"},
        CommandCase{"earlier word wins whatever the table order",
                    "/usr/bin/cargo",
                    {"cargo", "watch", "build"},
                    "cargo watch"},
        CommandCase{"argv0 equal to a word is never looked at", "/usr/bin/test", {"test"}, "test"},
        CommandCase{"argv0 word ignored, later word taken",
                    "/opt/x/runner",
                    {"test", "--flag", "serve"},
                    "runner serve"},
        CommandCase{"upper case word", "/usr/bin/make", {"make", "TEST"}, "make test"},
        CommandCase{"whole argument only",
                    "/usr/bin/npm",
                    {"npm", "--test", "test.js", "rebuild", "tests", "Lint:fix"},
                    "npm"},
        CommandCase{"secret next to word",
                    "/usr/bin/sh",
                    {"sh", "--token=abc123", "start", "--token=abc123"},
                    "sh start"},
        CommandCase{"executable keeps its case",
                    "/Applications/Foo.app/Contents/MacOS/Foo",
                    {"Foo", "Build"},
                    "Foo build"},
        CommandCase{"each table word", "/bin/t", {"t", "x", "LINT"}, "t lint"},
        CommandCase{
            "word of another script is not in the table", "/bin/t", {"t", "ruN", "wAtch"}, "t run"},
        CommandCase{"empty executable, no word", "", {"", "--x"}, "未知任务"},
        CommandCase{"empty executable component", "/usr/bin/", {}, "bin"},
        CommandCase{"root as executable path", "/", {"x"}, "未知任务"},
        CommandCase{"empty executable with a word", "", {"a", "dev"}, "dev"},
        CommandCase{
            "deleted binary keeps its marker", "/usr/bin/vim (deleted)", {"vim"}, "vim (deleted)"},
        CommandCase{"non-ASCII arguments of word length",
                    "/bin/x",
                    {"x", "ＴＥＳＴ", "tést", "ßerve"},
                    "x"}),
    RowName());

struct ProjectCase {
    const char *description;
    std::optional<QString> workingDirectory;
    std::optional<QString> expected;
    QStringList accountDirectories = {};
};

class ProjectTest : public testing::TestWithParam<ProjectCase> {};

TEST_P(ProjectTest, NamesTheLastMeaningfulComponent)
{
    const ProjectCase &row = GetParam();
    EXPECT_EQ(projectOfWorkingDirectory(row.workingDirectory, row.accountDirectories),
              row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Directories, ProjectTest,
    testing::Values(
        ProjectCase{"absent", std::nullopt, std::nullopt},
        ProjectCase{"empty", QString(), std::nullopt}, ProjectCase{"root", "/", std::nullopt},
        ProjectCase{"many slashes", "///", std::nullopt},
        ProjectCase{"macOS homes folder", "/Users", std::nullopt},
        ProjectCase{"macOS home", "/Users/someone", std::nullopt},
        ProjectCase{"macOS project", "/Users/someone/src/site", "site"},
        ProjectCase{"macOS home's child", "/Users/someone/site", "site"},
        ProjectCase{"case-sensitive Users", "/users/someone", "someone"},
        ProjectCase{"dot-dot back to Users", "/Users/someone/..", std::nullopt},
        ProjectCase{"Linux homes folder", "/home", std::nullopt},
        ProjectCase{"Linux home", "/home/x", std::nullopt},
        ProjectCase{"Linux home trailing slash", "/home/x/", std::nullopt},
        ProjectCase{"Linux dot-dot back to home", "/home/x/..", std::nullopt},
        ProjectCase{"Linux project", "/home/x/work/kiln", "kiln"},
        ProjectCase{"Linux home's child", "/home/x/kiln", "kiln"},
        ProjectCase{"root's home", "/root", std::nullopt},
        ProjectCase{"root's project", "/root/kiln", "kiln"},
        ProjectCase{"root as a deeper folder", "/srv/root", "root"},
        ProjectCase{"tmp", "/tmp", "tmp"}, ProjectCase{"two components", "/opt/tools", "tools"},
        ProjectCase{"trailing slash", "/opt/tools/", "tools"},
        ProjectCase{"dot component", "/opt/./tools/.", "tools"},
        ProjectCase{"dot-dot resolved", "/srv/a/b/../c", "c"},
        ProjectCase{"dot-dot above root", "/../..", std::nullopt},
        ProjectCase{"dot-dot above root then a folder", "/../../srv", "srv"},
        ProjectCase{"relative dot-dot stays unresolved", "../..", std::nullopt},
        ProjectCase{"relative", "src/site", "site"}, ProjectCase{"dot only", ".", std::nullopt},
        ProjectCase{"blank name", "/srv/a/ ", " "},
        ProjectCase{"non-ASCII name", "/home/x/项目/温控", "温控"},
        ProjectCase{"control characters shown as ?", "/srv/a\nb\x1b[31m", "a?b?[31m"},
        ProjectCase{"Fedora home", "/var/home/bob", std::nullopt, {"/var/home/bob", "/var/home"}},
        ProjectCase{
            "Fedora homes folder", "/var/home/", std::nullopt, {"/var/home/bob", "/var/home"}},
        ProjectCase{"Fedora project", "/var/home/bob/kiln", "kiln", {"/var/home/bob", "/var/home"}},
        ProjectCase{"WSL home by dot-dot",
                    "/mnt/c/Users/carol/x/..",
                    std::nullopt,
                    {"/mnt/c/Users/carol", "/mnt/c/Users"}},
        ProjectCase{"another account's home is not the user's",
                    "/var/home/dave",
                    "dave",
                    {"/var/home/bob", "/var/home"}}),
    RowName());

TEST(RedactedCommandSummaryTest, CombinesCommandAndProjectWithoutKeepingArgumentText)
{
    QStringList arguments{"npm", "TEST", "--token=abc123"};
    std::optional<QString> directory = QString("/home/x/work/kiln");
    const RedactedCommandSummary summary =
        makeRedactedCommandSummary("/usr/bin/npm", arguments, directory);
    EXPECT_EQ(summary, (RedactedCommandSummary{"npm test", QString("kiln")}));

    // Neither text shares storage with the raw input: overwriting the input
    // in place leaves the summary unchanged.
    arguments[1].fill(QLatin1Char('#'));
    directory->fill(QLatin1Char('#'));
    EXPECT_EQ(summary, (RedactedCommandSummary{"npm test", QString("kiln")}));
}

} // namespace
