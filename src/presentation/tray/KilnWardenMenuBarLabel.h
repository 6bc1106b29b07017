#pragma once

#include "dashboard/MenuBarPresentation.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QString>

// The tray item: the mark, and the menu bar's words. A tray shows no text
// beside its icon on most Linux panels, so the label's words become the
// icon's tooltip, which is also what a screen reader announces for it.

// The label as spoken: the menu title alone while collecting; "正常 · 58°"
// when calm; "KilnWarden <menu title>" otherwise.
QString menuBarLabelAccessibilityText(const MenuBarPresentation &presentation);

// The mark in the template palette without bars, `pixelSize` square, in
// `ink`. Panels may be light or dark whatever the application's own palette
// says, so the strokes carry a thin halo of the opposite lightness. In the
// abnormal states a dot of the state's colour sits at the lower right, so heat
// shows at a glance without the words.
QImage menuBarLabelImage(MenuBarPresentationState state, int pixelSize, const QColor &ink);
// The same at the sizes that trays ask for.
QIcon menuBarLabelIcon(MenuBarPresentationState state, const QColor &ink);
