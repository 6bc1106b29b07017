#include "presentation/tray/MenuBarAppearance.h"

#include "presentation/kit/DashboardPalette.h"
#include "sampling/EnumTable.h"

#include <QPalette>

bool isDarkAppearance(const QPalette &palette)
{
    return palette.color(QPalette::Active, QPalette::Window).lightness() < 128;
}

MenuBarPanelColors menuBarPanelColors(bool dark)
{
    // The desktop's label colours are its ink at two strengths; these follow
    // the common light and dark values (85 % and 50 % ink) so that the panel
    // reads like the system's own popups whatever the theme's accent.
    const auto ink = [dark](int darkAlpha, int lightAlpha) {
        return dark ? QColor(255, 255, 255, darkAlpha) : QColor(0, 0, 0, lightAlpha);
    };
    return {
        .background = dark ? QColor(0x2C, 0x2C, 0x2E) : QColor(0xFF, 0xFF, 0xFF),
        .border = ink(36, 46),
        .primaryText = ink(217, 217),
        .secondaryText = ink(140, 128),
        .divider = ink(31, 26),
        .buttonFill = ink(36, 10),
        .buttonBorder = ink(20, 36),
        .buttonPressFill = ink(64, 31),
    };
}

namespace {

// The colours of each state: its own, and the background behind it in the
// light appearance. `collecting` has no colour of its own: it takes the
// panel's secondary text.
struct StateColours {
    MenuBarPresentationState key;
    QRgb color;
    QRgb lightBackground;
};
using S = MenuBarPresentationState;
namespace P = DashboardPalette;
constexpr StateColours kStateColours[] = {
    {S::collecting, 0, P::controlBackground},
    {S::observing, P::accent, P::accentBackground},
    {S::normal, P::success, P::successBackground},
    {S::highLoad, P::warning, P::warningBackground},
    {S::actionRecommended, P::danger, P::dangerBackground},
};
static_assert(coversEnumeration(kStateColours, S::actionRecommended));

} // namespace

QColor menuBarStateColor(MenuBarPresentationState state, bool dark)
{
    if (state == S::collecting)
        return menuBarPanelColors(dark).secondaryText;
    return QColor::fromRgb(enumRow(kStateColours, state).color);
}

QColor menuBarStateBackground(MenuBarPresentationState state, bool dark)
{
    if (!dark)
        return QColor::fromRgb(enumRow(kStateColours, state).lightBackground);
    if (state == S::collecting)
        return DashboardPalette::color(DashboardPalette::white, 0.1);
    QColor tint = menuBarStateColor(state, true);
    tint.setAlphaF(0.22f);
    return tint;
}
