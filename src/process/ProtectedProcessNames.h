#pragma once

#include <QString>

#include <array>
#include <string_view>

// Names of processes that hold a Linux desktop session together: the service
// manager, the display server and compositors, the message bus, the remote
// login daemon and the display managers. Ending one of them ends the user's
// session or locks them out of the machine, so no termination may reach them,
// whatever the classification of the load. Compared with the lower-cased
// process name (comm), exact match.
//
// Both protected lists take these: the termination controller's and the
// classification's shorter list that decides whether a task offers ending.
inline constexpr std::array<std::string_view, 15> kLinuxProtectedProcessNames = {
    "systemd",      "init",     "xorg",        "xwayland",    "gnome-shell",
    "kwin_wayland", "kwin_x11", "plasmashell", "dbus-daemon", "dbus-broker",
    "sshd",         "login",    "gdm",         "sddm",        "lightdm",
};

// The termination controller's list: the processes of the macOS session that
// a signal must never reach, plus the Linux ones above. `name` is compared
// lower-cased; the set is built once, on first use, thread-safely.
bool isTerminationProtectedName(const QString &name);
