#pragma once

#include <QByteArray>

#include <memory>

// Whether a window system can be reached, asked before the GUI toolkit
// starts: Qt aborts the process when its platform cannot connect.

// The Wayland compositor named by `waylandDisplay` (a name in
// `runtimeDirectory`, or an absolute path) accepts a connection.
bool isWaylandDisplayReachable(const QByteArray &waylandDisplay,
                               const QByteArray &runtimeDirectory);
// A connection to the X server named by `display` that completed its
// handshake, authorisation included; null when there is none. Keep it until
// the toolkit has connected: an X server whose last client leaves resets
// itself, and refuses connections for that moment.
std::shared_ptr<void> connectX11Display(const QByteArray &display);
