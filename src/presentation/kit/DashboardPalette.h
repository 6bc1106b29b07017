#pragma once

#include <QColor>
#include <QRgb>

// The dashboard's fixed colours (sRGB, opaque). The dashboard does not follow
// the system's dark appearance: these hold in every appearance. Only the tray
// panel follows the system (it uses the system palette plus these accents).
namespace DashboardPalette {
inline constexpr QRgb pageBackground = 0xFFFFFFFF;
inline constexpr QRgb headerBackground = 0xFFFFFFFF;
inline constexpr QRgb sidebarBackground = 0xFFF7F8FA;
inline constexpr QRgb sidebarSelection = 0xFFE3F0FF;
inline constexpr QRgb controlBackground = 0xFFF7F8FA;
inline constexpr QRgb panelBackground = 0xFFF7F8FA;
inline constexpr QRgb mutedBackground = 0xFFF5F5F7;
inline constexpr QRgb divider = 0xFFE7E9ED;
inline constexpr QRgb textPrimary = 0xFF20242B;
inline constexpr QRgb textSecondary = 0xFF717882;
inline constexpr QRgb textTertiary = 0xFF9AA1AA;
inline constexpr QRgb accent = 0xFF0A84FF;
inline constexpr QRgb accentBackground = 0xFFEAF3FF;
inline constexpr QRgb chartBlue = 0xFF0A84FF;
inline constexpr QRgb chartPurple = 0xFF8B5CF6;
inline constexpr QRgb success = 0xFF34C759;
inline constexpr QRgb successBackground = 0xFFEAF9EE;
inline constexpr QRgb warning = 0xFFFF9F0A;
inline constexpr QRgb warningBackground = 0xFFFFF4DF;
inline constexpr QRgb danger = 0xFFFF5C40;
inline constexpr QRgb dangerBackground = 0xFFFFECE8;
inline constexpr QRgb brandInk = 0xFF152035;
inline constexpr QRgb brandOrange = 0xFFFF7A3D;
inline constexpr QRgb white = 0xFFFFFFFF;

// A palette colour at an opacity from 0 to 1.
inline QColor color(QRgb rgb, double opacity = 1.0)
{
    QColor result = QColor::fromRgb(rgb);
    result.setAlphaF(static_cast<float>(opacity));
    return result;
}
} // namespace DashboardPalette
