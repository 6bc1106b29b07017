// Where the panel opens beside its anchor, and that it stays on screen.

#include "presentation/tray/MenuBarPanelPopup.h"
#include "support/FixtureTable.h"

#include <gtest/gtest.h>

namespace {

TEST(MenuBarPanelPopup, opensBesideTheAnchorAndStaysOnScreen)
{
    const auto numbers = [](const QByteArray &field) {
        QList<int> values;
        for (const QByteArray &value : field.split(' '))
            values << value.toInt();
        return values;
    };
    for (const FixtureRow &row : fixtureTable(QStringLiteral("menu-bar-panel-positions"))) {
        const QList<int> anchor = numbers(row.fields[0]), screen = numbers(row.fields[1]),
                         at = numbers(row.fields[2]);
        const auto alignment = row.fields.size() > 3 && row.fields[3] == "leading"
                                   ? MenuBarPanelAlignment::leading
                                   : MenuBarPanelAlignment::centred;
        EXPECT_EQ(
            menuBarPanelPosition(QRect(anchor[0], anchor[1], anchor[2], anchor[3]), QSize(330, 300),
                                 QRect(screen[0], screen[1], screen[2], screen[3]), alignment),
            QPoint(at[0], at[1]))
            << row.where;
    }
}

} // namespace
