#include "platform/linux/ServiceManagerRecognition.h"

#include <algorithm>

bool isUserServiceManagerCgroup(std::string_view path)
{
    constexpr std::string_view scope = "/init.scope";
    if (!path.ends_with(scope))
        return false;
    path.remove_suffix(scope.size());
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return false;
    std::string_view unit = path.substr(slash + 1);
    constexpr std::string_view prefix = "user@";
    constexpr std::string_view suffix = ".service";
    if (!unit.starts_with(prefix) || !unit.ends_with(suffix))
        return false;
    unit = unit.substr(prefix.size(), unit.size() - prefix.size() - suffix.size());
    return !unit.empty() &&
           std::all_of(unit.begin(), unit.end(), [](char c) { return c >= '0' && c <= '9'; });
}
