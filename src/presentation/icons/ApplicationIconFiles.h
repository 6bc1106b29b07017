#pragma once

#include <QByteArray>
#include <QString>

#include <array>

// The desktop's icon theme files for the application, drawn from the mark's
// geometry at build time: a scalable SVG, written from the very paths that
// the program paints (so the two cannot drift apart), and PNGs rendered by
// the program's own icon drawing.

inline constexpr std::array<int, 9> kApplicationIconPixelSizes = {16, 22,  24,  32, 48,
                                                                  64, 128, 256, 512};

// The icon as an SVG document: the white tile and the full-colour mark with
// its bars, in a 100 by 100 view box.
QByteArray kilnWardenApplicationIconSvg();

// Writes <root>/hicolor/scalable/apps/<name>.svg and
// <root>/hicolor/<n>x<n>/apps/<name>.png for every size above. Returns what
// went wrong, or an empty text.
QString writeApplicationIconTheme(const QString &root, const QString &name);
