#pragma once

#include "dashboard/MenuBarPresentation.h"

#include <QElapsedTimer>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QWidget>

class KilnWardenMenuBarPanel;

// How the panel lines up with its anchor across: centred under a tray icon
// or the pointer, or starting at the anchor's left edge, as a menu hangs from
// the block that opened it.
enum class MenuBarPanelAlignment { centred, leading };

// Where the panel opens beside `anchor` (the tray icon, the sidebar's brand
// block or the pointer): below it when the anchor lies in the upper half of
// `available`, above it otherwise, and always inside `available` (a panel at
// a screen edge is pushed in, never cut off).
QPoint menuBarPanelPosition(const QRect &anchor, const QSize &panel, const QRect &available,
                            MenuBarPanelAlignment alignment = MenuBarPanelAlignment::centred);

// The frameless window that holds the panel, a window of its own on the
// accessibility bus. It takes the desktop's light or dark appearance from the
// application palette whenever it opens or the palette changes, and closes
// when it loses focus (a click elsewhere) or on Escape.
class MenuBarPanelPopup final : public QWidget {
    Q_OBJECT

public:
    explicit MenuBarPanelPopup(QWidget *parent = nullptr);

    KilnWardenMenuBarPanel *panel() const { return m_panel; }
    void setPresentation(const MenuBarPresentation &presentation);
    // Opens (or moves) the popup next to `anchor`, in global coordinates, on
    // the screen that holds the anchor.
    void openAt(const QRect &anchor,
                MenuBarPanelAlignment alignment = MenuBarPanelAlignment::centred);
    // True for a short while after the popup closed: the press on the tray
    // icon that closed it must not open it again at once.
    bool closedMomentsAgo() const;

signals:
    // The application palette changed (the desktop switched appearance).
    void appearanceChanged();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void followAppearance();
    void fitToPanel();

    KilnWardenMenuBarPanel *m_panel;
    QElapsedTimer m_closedAt;
};
