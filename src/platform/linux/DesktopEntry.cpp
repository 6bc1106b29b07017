#include "platform/linux/DesktopEntry.h"

#include <QByteArray>

#include <sys/stat.h>

namespace {

std::string_view trimmedBlanks(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
        text.remove_suffix(1);
    return text;
}

QString unescapeValue(std::string_view value)
{
    QByteArray bytes;
    bytes.reserve(qsizetype(value.size()));
    for (std::size_t index = 0; index < value.size(); ++index) {
        if (value[index] == '\\' && index + 1 < value.size()) {
            const char code = value[++index];
            switch (code) {
            case 's':
                bytes.append(' ');
                continue;
            case 'n':
                bytes.append('\n');
                continue;
            case 't':
                bytes.append('\t');
                continue;
            case 'r':
                bytes.append('\r');
                continue;
            case '\\':
                bytes.append('\\');
                continue;
            default:
                bytes.append('\\');
                bytes.append(code);
                continue;
            }
        }
        bytes.append(value[index]);
    }
    // Escaped line breaks stay in the name: printableText shows them as "?".
    return QString::fromUtf8(bytes);
}

bool isRegularFile(const QString &path)
{
    struct stat status {};
    return ::stat(path.toLocal8Bit().constData(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

std::optional<QString> parseDesktopEntryName(std::string_view text)
{
    std::optional<QString> name;
    std::optional<QString> chineseName;
    bool inMainGroup = false;
    bool mainGroupSeen = false;
    while (!text.empty()) {
        const std::size_t newline = text.find('\n');
        const std::string_view line = trimmedBlanks(text.substr(0, newline));
        text.remove_prefix(newline == std::string_view::npos ? text.size() : newline + 1);
        if (line.empty() || line.front() == '#')
            continue;
        if (line.front() == '[') {
            // Only the first [Desktop Entry] group counts; actions and
            // vendor groups may carry Names of their own.
            if (inMainGroup || mainGroupSeen)
                break;
            inMainGroup = line == "[Desktop Entry]";
            mainGroupSeen = inMainGroup;
            continue;
        }
        if (!inMainGroup)
            continue;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            continue;
        const std::string_view key = trimmedBlanks(line.substr(0, equals));
        const std::string_view value = trimmedBlanks(line.substr(equals + 1));
        if (value.empty())
            continue;
        if (key == "Name" && !name)
            name = unescapeValue(value);
        else if (key == "Name[zh_CN]" && !chineseName)
            chineseName = unescapeValue(value);
    }
    return chineseName ? chineseName : name;
}

QStringList xdgDataDirectories(const QString &dataHome, const QString &dataDirs,
                               const QString &home)
{
    QStringList directories;
    auto add = [&](const QString &directory) {
        if (directory.startsWith(QLatin1Char('/')) && !directories.contains(directory))
            directories << directory;
    };
    if (!dataHome.isEmpty())
        add(dataHome);
    else if (!home.isEmpty())
        add(home + QStringLiteral("/.local/share"));
    const QString system =
        dataDirs.isEmpty() ? QStringLiteral("/usr/local/share:/usr/share") : dataDirs;
    for (const QString &directory : system.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        add(directory);
    return directories;
}

QStringList xdgDataDirectoriesFromEnvironment()
{
    return xdgDataDirectories(qEnvironmentVariable("XDG_DATA_HOME"),
                              qEnvironmentVariable("XDG_DATA_DIRS"), qEnvironmentVariable("HOME"));
}

std::optional<QString> findDesktopEntry(const QString &applicationID,
                                        const QStringList &dataDirectories)
{
    // An ApplicationID is a file name: one that could climb out of the
    // applications folder is not one.
    if (applicationID.isEmpty() || applicationID.contains(QLatin1Char('/')) ||
        applicationID.startsWith(QLatin1Char('.')))
        return std::nullopt;
    for (const QString &directory : dataDirectories) {
        const QString path = directory + QStringLiteral("/applications/") + applicationID +
                             QStringLiteral(".desktop");
        if (isRegularFile(path))
            return path;
    }
    return std::nullopt;
}
