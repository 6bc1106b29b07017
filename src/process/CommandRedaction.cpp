#include "process/CommandRedaction.h"

#include "sampling/Text.h"

#include <QCoreApplication>
#include <QLatin1StringView>
#include <QStringView>

#include <array>
#include <vector>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(CommandRedaction)
};

// The recognised subcommands, lower case, matched whole.
constexpr std::array<QLatin1StringView, 8> subcommandTable = {
    QLatin1StringView("build"), QLatin1StringView("dev"),   QLatin1StringView("lint"),
    QLatin1StringView("run"),   QLatin1StringView("serve"), QLatin1StringView("start"),
    QLatin1StringView("test"),  QLatin1StringView("watch"),
};
constexpr qsizetype shortestSubcommand = 3;
constexpr qsizetype longestSubcommand = 5;

// The table word that `argument` lower-cases to exactly, if any. Lower-casing
// never shortens a text to an ASCII word of another length, so arguments of
// other lengths are passed over without building their lower-case copy; this
// runs for every argument of every process on every tick.
std::optional<QLatin1StringView> subcommandOf(const QString &argument)
{
    if (argument.size() < shortestSubcommand || argument.size() > longestSubcommand)
        return std::nullopt;
    const QString lowered = argument.toLower();
    for (const QLatin1StringView word : subcommandTable) {
        if (lowered == word)
            return word;
    }
    return std::nullopt;
}

// The last component of a file path; trailing slashes do not count, so
// "/usr/bin/" gives "bin" and "/" gives nothing.
QStringView lastPathComponent(QStringView path)
{
    while (!path.isEmpty() && path.back() == QLatin1Char('/'))
        path.chop(1);
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash < 0 ? path : path.sliced(slash + 1);
}

// The components of `path` with "." dropped and ".." resolved against the
// component before it. Above the root ".." stays at the root; in a relative
// path a leading ".." is kept, as it cannot be resolved.
std::vector<QStringView> standardizedComponents(QStringView path)
{
    const bool absolute = path.startsWith(QLatin1Char('/'));
    std::vector<QStringView> components;
    for (const QStringView part : path.tokenize(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        if (part == QLatin1StringView("."))
            continue;
        if (part == QLatin1StringView("..")) {
            if (!components.empty() && components.back() != QLatin1StringView("..")) {
                components.pop_back();
                continue;
            }
            if (absolute)
                continue;
        }
        components.push_back(part);
    }
    return components;
}

// Directories whose children are account homes: an account name must never
// show as a project. "/Users" is the macOS one, "/home" the Linux one.
bool isHomeParent(QStringView component)
{
    return component == QLatin1StringView("Users") || component == QLatin1StringView("home");
}

} // namespace

QString redactedCommandText(const QString &executablePath, const QStringList &arguments)
{
    QString command = lastPathComponent(executablePath).toString();
    for (qsizetype index = 1; index < arguments.size(); ++index) {
        if (const auto word = subcommandOf(arguments.at(index))) {
            if (!command.isEmpty())
                command += QLatin1Char(' ');
            command += *word;
            break;
        }
    }
    if (command.isEmpty())
        return Words::tr("未知任务");
    return command;
}

std::optional<QString> projectOfWorkingDirectory(const std::optional<QString> &workingDirectory,
                                                 const QStringList &accountDirectories)
{
    if (!workingDirectory || workingDirectory->isEmpty())
        return std::nullopt;
    const std::vector<QStringView> components = standardizedComponents(*workingDirectory);
    if (components.empty())
        return std::nullopt;
    const QStringView last = components.back();
    if (last.isEmpty() || last == QLatin1StringView(".") || last == QLatin1StringView(".."))
        return std::nullopt;
    if (components.size() <= 2) {
        // "/Users", "/Users/<name>", "/home", "/home/<name>": a home or the
        // folder of homes. "/root" is root's own home on Linux.
        if (isHomeParent(components.front()))
            return std::nullopt;
        if (components.size() == 1 && last == QLatin1StringView("root"))
            return std::nullopt;
    }
    if (!accountDirectories.isEmpty() && workingDirectory->startsWith(QLatin1Char('/'))) {
        QString standardized;
        for (const QStringView component : components) {
            standardized += QLatin1Char('/');
            standardized += component;
        }
        if (accountDirectories.contains(standardized))
            return std::nullopt;
    }
    return last.toString();
}

