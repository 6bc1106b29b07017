#pragma once

#include "dashboard/MenuBarPresentation.h"

#include <QColor>

class QPalette;

// The colours of the tray item's panel. Unlike the dashboard, the panel
// follows the desktop's light or dark appearance; everything it paints comes
// from here, from the state and that one flag, so a test can render every
// state in both appearances.

// Dark when the palette's window colour is darker than middle grey: the one
// reading of the appearance that every Qt platform theme gives.
bool isDarkAppearance(const QPalette &palette);

struct MenuBarPanelColors {
    QColor background;    // the panel's own surface
    QColor border;        // its 1-pixel outline
    QColor primaryText;   // headline, metric values, task name
    QColor secondaryText; // captions, duration, running time
    QColor divider;
    QColor buttonFill;      // the bordered "退出" button
    QColor buttonBorder;    //
    QColor buttonPressFill; //

    bool operator==(const MenuBarPanelColors &) const = default;
};
MenuBarPanelColors menuBarPanelColors(bool dark);

// The state's colour: its symbol, the status row and the CPU value.
QColor menuBarStateColor(MenuBarPresentationState state, bool dark);
// The state's background: behind the primary task box and the message row.
// In dark appearance a translucent colour, painted over the panel's surface.
QColor menuBarStateBackground(MenuBarPresentationState state, bool dark);
