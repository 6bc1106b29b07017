#include "presentation/tray/MenuBarAppearance.h"

#include "presentation/kit/DashboardPalette.h"

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
    if (dark) {
        return {
            .background = QColor(0x2C, 0x2C, 0x2E),
            .border = QColor(255, 255, 255, 36),
            .primaryText = QColor(255, 255, 255, 217),
            .secondaryText = QColor(255, 255, 255, 140),
            .divider = QColor(255, 255, 255, 31),
            .buttonFill = QColor(255, 255, 255, 36),
            .buttonBorder = QColor(255, 255, 255, 20),
            .buttonPressFill = QColor(255, 255, 255, 64),
        };
    }
    return {
        .background = QColor(0xFF, 0xFF, 0xFF),
        .border = QColor(0, 0, 0, 46),
        .primaryText = QColor(0, 0, 0, 217),
        .secondaryText = QColor(0, 0, 0, 128),
        .divider = QColor(0, 0, 0, 26),
        .buttonFill = QColor(0, 0, 0, 10),
        .buttonBorder = QColor(0, 0, 0, 36),
        .buttonPressFill = QColor(0, 0, 0, 31),
    };
}

QColor menuBarStateColor(MenuBarPresentationState state, bool dark)
{
    switch (state) {
    case MenuBarPresentationState::collecting:
        return menuBarPanelColors(dark).secondaryText;
    case MenuBarPresentationState::observing:
        return QColor::fromRgb(DashboardPalette::accent);
    case MenuBarPresentationState::normal:
        return QColor::fromRgb(DashboardPalette::success);
    case MenuBarPresentationState::highLoad:
        return QColor::fromRgb(DashboardPalette::warning);
    case MenuBarPresentationState::actionRecommended:
        break;
    }
    return QColor::fromRgb(DashboardPalette::danger);
}

QColor menuBarStateBackground(MenuBarPresentationState state, bool dark)
{
    using namespace DashboardPalette;
    if (dark) {
        if (state == MenuBarPresentationState::collecting)
            return color(white, 0.1);
        QColor tint = menuBarStateColor(state, true);
        tint.setAlphaF(0.22f);
        return tint;
    }
    switch (state) {
    case MenuBarPresentationState::collecting:
        return QColor::fromRgb(controlBackground);
    case MenuBarPresentationState::observing:
        return QColor::fromRgb(accentBackground);
    case MenuBarPresentationState::normal:
        return QColor::fromRgb(successBackground);
    case MenuBarPresentationState::highLoad:
        return QColor::fromRgb(warningBackground);
    case MenuBarPresentationState::actionRecommended:
        break;
    }
    return QColor::fromRgb(dangerBackground);
}
