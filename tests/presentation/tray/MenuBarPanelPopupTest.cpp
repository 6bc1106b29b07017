// Where the panel opens beside its anchor, and that it stays on screen.

#include "presentation/tray/MenuBarPanelPopup.h"

#include <gtest/gtest.h>

namespace {

TEST(MenuBarPanelPopup, opensBesideTheAnchorAndStaysOnScreen)
{
    const QSize panel(330, 300);
    const QRect screen(0, 0, 1920, 1080);
    struct Case {
        const char *name;
        QRect anchor;
        QRect available;
        QPoint expected;
        MenuBarPanelAlignment alignment = MenuBarPanelAlignment::centred;
    };
    const Case cases[] = {
        // A tray at the top right: under the icon, pushed in from the edge.
        {"top right", QRect(1880, 2, 24, 24), screen, QPoint(1920 - 330, 30)},
        // A tray at the bottom: above the icon.
        {"bottom", QRect(900, 1050, 24, 24), screen, QPoint(911 - 165, 1050 - 4 - 300)},
        {"bottom left", QRect(0, 1050, 24, 24), screen, QPoint(0, 746)},
        {"centred under a block", QRect(400, 200, 240, 140), screen, QPoint(519 - 165, 344)},
        // The sidebar's brand block: hanging from its left edge.
        {"brand block", QRect(400, 200, 240, 140), screen, QPoint(400, 344),
         MenuBarPanelAlignment::leading},
        {"brand block at the right edge", QRect(1800, 200, 100, 40), screen, QPoint(1590, 244),
         MenuBarPanelAlignment::leading},
        // The pointer as anchor, on a second screen to the right.
        {"second screen", QRect(2000, 10, 1, 1), QRect(1920, 0, 1280, 1024), QPoint(1920, 15)},
        // A screen shorter than the panel: its top stays on screen.
        {"short screen", QRect(100, 100, 24, 24), QRect(0, 0, 800, 200), QPoint(0, 0)},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const QPoint at = menuBarPanelPosition(c.anchor, panel, c.available, c.alignment);
        EXPECT_EQ(at, c.expected);
    }
}

} // namespace
