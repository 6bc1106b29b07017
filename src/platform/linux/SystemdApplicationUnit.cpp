#include "platform/linux/SystemdApplicationUnit.h"

#include <QByteArray>

#include <vector>

namespace {

int hexValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    return -1;
}

// systemd's unit name escaping: "\xNN" stands for the byte NN. Anything else
// is taken as it stands, so a malformed escape stays visible, not lost.
QString unescapeUnitText(std::string_view text)
{
    QByteArray bytes;
    bytes.reserve(qsizetype(text.size()));
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '\\' && index + 3 < text.size() && text[index + 1] == 'x') {
            const int high = hexValue(text[index + 2]);
            const int low = hexValue(text[index + 3]);
            if (high >= 0 && low >= 0) {
                bytes.append(char(high * 16 + low));
                index += 3;
                continue;
            }
        }
        bytes.append(text[index]);
    }
    return QString::fromUtf8(bytes);
}

std::vector<std::string_view> splitOnDashes(std::string_view text)
{
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (;;) {
        const std::size_t dash = text.find('-', start);
        parts.push_back(text.substr(start, dash == std::string_view::npos ? dash : dash - start));
        if (dash == std::string_view::npos)
            return parts;
        start = dash + 1;
    }
}

// The ApplicationID among the dash-separated parts behind "app": with one part
// it is that part; with more, the first is the launcher and the rest, joined
// again, is the ApplicationID (a launcher that did not escape its dashes).
std::optional<QString> applicationIDOf(const std::vector<std::string_view> &rest)
{
    if (rest.empty())
        return std::nullopt;
    const std::size_t first = rest.size() == 1 ? 0 : 1;
    std::string_view whole(rest[first].data(), std::size_t(rest.back().data() + rest.back().size() -
                                                           rest[first].data()));
    if (whole.empty())
        return std::nullopt;
    for (std::string_view part : rest) {
        if (part.empty())
            return std::nullopt; // "app--x" or a trailing dash: not this naming
    }
    QString id = unescapeUnitText(whole);
    if (id.isEmpty())
        return std::nullopt;
    return id;
}

bool consumeSuffix(std::string_view &text, std::string_view suffix)
{
    if (!text.ends_with(suffix))
        return false;
    text.remove_suffix(suffix.size());
    return true;
}

} // namespace

std::optional<QString> applicationIDFromUnitName(std::string_view unitName)
{
    std::string_view stem = unitName;
    enum class Kind { service, scope, slice } kind;
    if (consumeSuffix(stem, ".service"))
        kind = Kind::service;
    else if (consumeSuffix(stem, ".scope"))
        kind = Kind::scope;
    else if (consumeSuffix(stem, ".slice"))
        kind = Kind::slice;
    else
        return std::nullopt;
    if (!stem.starts_with("app-"))
        return std::nullopt;
    stem.remove_prefix(4);

    if (kind == Kind::service) {
        const std::size_t at = stem.find('@');
        if (at != std::string_view::npos)
            stem = stem.substr(0, at);
    }
    std::vector<std::string_view> rest = splitOnDashes(stem);
    switch (kind) {
    case Kind::service:
        if (rest.size() > 1 && rest.back() == "autostart")
            rest.pop_back();
        break;
    case Kind::scope:
        if (rest.size() < 2 || rest.back().empty())
            return std::nullopt; // a scope always ends in its random part
        rest.pop_back();
        break;
    case Kind::slice:
        // A dash in a slice name means nesting ("app-gnome.slice" inside
        // "app.slice"); only the one-level form names an application.
        if (rest.size() != 1)
            return std::nullopt;
        break;
    }
    return applicationIDOf(rest);
}

std::optional<std::string_view> systemdCgroupPath(std::string_view procPidCgroup)
{
    std::optional<std::string_view> legacy;
    while (!procPidCgroup.empty()) {
        const std::size_t newline = procPidCgroup.find('\n');
        std::string_view line = procPidCgroup.substr(0, newline);
        procPidCgroup.remove_prefix(newline == std::string_view::npos ? procPidCgroup.size()
                                                                      : newline + 1);
        // hierarchy-ID:controller-list:cgroup-path; the path may hold colons.
        const std::size_t first = line.find(':');
        if (first == std::string_view::npos)
            continue;
        const std::size_t second = line.find(':', first + 1);
        if (second == std::string_view::npos)
            continue;
        const std::string_view hierarchy = line.substr(0, first);
        const std::string_view controllers = line.substr(first + 1, second - first - 1);
        const std::string_view path = line.substr(second + 1);
        if (path.empty() || path.front() != '/')
            continue;
        if (hierarchy == "0" && controllers.empty())
            return path;
        std::string_view list = controllers;
        while (!legacy && !list.empty()) {
            const std::size_t comma = list.find(',');
            if (list.substr(0, comma) == "name=systemd")
                legacy = path;
            list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
        }
    }
    return legacy;
}

std::optional<QString> applicationIDFromCgroup(std::string_view procPidCgroup)
{
    const std::optional<std::string_view> path = systemdCgroupPath(procPidCgroup);
    if (!path)
        return std::nullopt;
    std::string_view remaining = *path;
    while (!remaining.empty()) {
        const std::size_t slash = remaining.rfind('/');
        const std::string_view component =
            slash == std::string_view::npos ? remaining : remaining.substr(slash + 1);
        // An ID names a file (<ID>.desktop): a decoded "\x2f" must not
        // let it reach into another folder, and an empty one names nothing.
        if (auto id = applicationIDFromUnitName(component);
            id && !id->isEmpty() && !id->contains(QLatin1Char('/')))
            return id;
        remaining =
            slash == std::string_view::npos ? std::string_view() : remaining.substr(0, slash);
    }
    return std::nullopt;
}
