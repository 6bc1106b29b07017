#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>
#include <QSizeF>

#include <optional>

// Where the dashboard window goes when it is first shown, and how large it is.

// The content size at first show. Without a requested size: the available
// size, at most 1440 by 900. A requested size may exceed a small screen
// (screenshots at a fixed size), but not twice its size: beyond that no
// window manager lets the user reach the window's edges, and a huge backing
// store cannot be made. `available` is absent without a screen.
QSize initialDashboardContentSize(const std::optional<QSizeF> &requested,
                                  const std::optional<QSize> &available);

// The content geometry that puts the whole frame (title bar and borders
// included) inside `available`: the content shrinks by what the frame adds,
// down to `minimum`, and moves so the frame's top-left corner is inside.
QRect fitFrameInto(const QRect &content, const QMargins &frame, const QRect &available,
                   const QSize &minimum);
