#pragma once

#include <QByteArray>
#include <QString>

#include <array>

// What the desktop's icon theme holds for the application, drawn from the
// mark's geometry: a scalable SVG made from the very paths that the program
// paints (so the two cannot drift apart), and the pixel sizes whose PNGs the
// program's own icon drawing renders. The build tool kilnwarden-icons
// (packaging/icons) writes them; the program itself writes no file.

inline constexpr std::array<int, 9> kApplicationIconPixelSizes = {16, 22,  24,  32, 48,
                                                                  64, 128, 256, 512};

// The icon as an SVG document: the white tile and the full-colour mark with
// its bars, in a 100 by 100 view box.
QByteArray kilnWardenApplicationIconSvg();
