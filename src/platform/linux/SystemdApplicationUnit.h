#pragma once

#include <QString>

#include <optional>
#include <string_view>

// The desktop application a process belongs to, as systemd records it: a
// launcher (GNOME Shell, KDE, Flatpak, ...) starts each application in a unit
// named after its ApplicationID (the desktop entry's name), and the process's
// cgroup path names that unit. The forms, with dashes inside an ApplicationID
// escaped as "\x2d":
//   app[-<launcher>]-<ApplicationID>[@<RANDOM>].service
//   app[-<launcher>]-<ApplicationID>-<RANDOM>.scope   (Flatpak: app-flatpak-<ID>-<n>.scope)
//   app-<ApplicationID>.slice
// A "-autostart" after the ApplicationID of a service is not part of it.

// The unescaped ApplicationID of one cgroup path component, or nothing when
// the component is not a desktop application's unit or slice.
std::optional<QString> applicationIDFromUnitName(std::string_view unitName);

// The systemd cgroup path in the text of /proc/<pid>/cgroup: the unified
// hierarchy's line ("0::<path>"), else the legacy "name=systemd" hierarchy's.
std::optional<std::string_view> systemdCgroupPath(std::string_view procPidCgroup);

// The ApplicationID of the innermost unit or enclosing slice on that path
// that follows the naming above; nothing when none does.
std::optional<QString> applicationIDFromCgroup(std::string_view procPidCgroup);
