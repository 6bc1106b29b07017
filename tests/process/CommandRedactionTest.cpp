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

using C = CommandCase;
// clang-format off
const CommandCase kCommands[] = {
    C{"no arguments", "/usr/bin/node", {}, "node"},
    C{"no table word drops everything", "/usr/bin/node",
      {"node", "/home/a/proj/node_modules/.bin/vite", "--port", "3000", "--token", "abc"}, "node"},
    C{"first word wins, lowered", "/usr/bin/npm", {"npm", "RUN", "dev", "--secret=x"}, "npm run"},
    C{"earlier word wins", "/usr/bin/cargo", {"cargo", "watch", "build"}, "cargo watch"},
    C{"argv0 equal to a word is never looked at", "/usr/bin/test", {"test"}, "test"},
    C{"argv0 word ignored", "/opt/x/runner", {"test", "--flag", "serve"}, "runner serve"},
    C{"whole word only", "/bin/npm", {"npm", "--test", "test.js", "rebuild", "tests", "Lint:fix"},
      "npm"},
    C{"secret next to word", "/bin/sh", {"sh", "--token=abc", "start", "--token=abc"}, "sh start"},
    C{"executable keeps its case", "/Applications/Foo.app/MacOS/Foo", {"Foo", "Build"},
      "Foo build"},
    C{"word of another script is not in the table", "/bin/t", {"t", "ruN", "wAtch"}, "t run"},
    C{"empty executable, no word", "", {"", "--x"}, "未知任务"},
    C{"empty executable component", "/usr/bin/", {}, "bin"},
    C{"root as executable path", "/", {"x"}, "未知任务"},
    C{"empty executable with a word", "", {"a", "dev"}, "dev"},
    C{"deleted binary keeps its marker", "/usr/bin/vim (deleted)", {"vim"}, "vim (deleted)"},
    C{"non-ASCII arguments of word length", "/bin/x", {"x", "ＴＥＳＴ", "tést", "ßerve"}, "x"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Commands, RedactedCommandTest, testing::ValuesIn(kCommands), RowName());

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

using P = ProjectCase;
const QStringList fedora = {"/var/home/bob", "/var/home"};
const QStringList wsl = {"/mnt/c/Users/carol", "/mnt/c/Users"};
const ProjectCase kProjects[] = {
    P{"absent", std::nullopt, std::nullopt},
    P{"empty", QString(), std::nullopt},
    P{"root", "/", std::nullopt},
    P{"macOS home", "/Users/someone", std::nullopt},
    P{"case-sensitive Users", "/users/someone", "someone"},
    P{"Linux home", "/home/x", std::nullopt},
    P{"Linux dot-dot back to home", "/home/x/..", std::nullopt},
    P{"Linux home's child", "/home/x/kiln", "kiln"},
    P{"root's home", "/root", std::nullopt},
    P{"root's project", "/root/kiln", "kiln"},
    P{"root as a deeper folder", "/srv/root", "root"},
    P{"tmp", "/tmp", "tmp"},
    P{"two components", "/opt/tools", "tools"},
    P{"trailing slash", "/opt/tools/", "tools"},
    P{"dot component", "/opt/./tools/.", "tools"},
    P{"dot-dot resolved", "/srv/a/b/../c", "c"},
    P{"dot-dot above root", "/../..", std::nullopt},
    P{"dot-dot above root then a folder", "/../../srv", "srv"},
    P{"relative dot-dot stays unresolved", "../..", std::nullopt},
    P{"relative", "src/site", "site"},
    P{"blank name", "/srv/a/ ", " "},
    P{"control characters kept for the display", "/srv/a\nb\x1b[31m", "a\nb\x1b[31m"},
    P{"Fedora home", "/var/home/bob", std::nullopt, fedora},
    P{"Fedora homes folder", "/var/home/", std::nullopt, fedora},
    P{"Fedora project", "/var/home/bob/kiln", "kiln", fedora},
    P{"WSL home by dot-dot", "/mnt/c/Users/carol/x/..", std::nullopt, wsl},
    P{"another account's home", "/var/home/dave", "dave", fedora},
};

INSTANTIATE_TEST_SUITE_P(Directories, ProjectTest, testing::ValuesIn(kProjects), RowName());

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
