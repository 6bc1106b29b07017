// The tray item's words and icon: the three spoken forms of the label, and
// the state's dot that only the abnormal states carry.

#include "presentation/kit/DashboardPalette.h"
#include "presentation/tray/KilnWardenMenuBarLabel.h"

#include <gtest/gtest.h>

namespace {

MenuBarPresentation presentationOf(MenuBarPresentationState state, const QString &menuTitle)
{
    MenuBarPresentation presentation;
    presentation.state = state;
    presentation.menuTitle = menuTitle;
    return presentation;
}

TEST(MenuBarLabel, speaksOneOfThreeFormsByState)
{
    struct Case {
        MenuBarPresentationState state;
        QString menuTitle;
        QString spoken;
    };
    using S = MenuBarPresentationState;
    const Case cases[] = {
        {S::collecting, QStringLiteral("KilnWarden"), QStringLiteral("KilnWarden")},
        {S::normal, QStringLiteral("58°"), QStringLiteral("正常 · 58°")},
        // Without a temperature the calm title is the state's own word.
        {S::normal, QStringLiteral("正常"), QStringLiteral("正常 · 正常")},
        {S::observing, QStringLiteral("观察中 · 40°"), QStringLiteral("KilnWarden 观察中 · 40°")},
        {S::highLoad, QStringLiteral("负载高 · 82°"), QStringLiteral("KilnWarden 负载高 · 82°")},
        {S::actionRecommended, QStringLiteral("建议处理"), QStringLiteral("KilnWarden 建议处理")},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.menuTitle.toStdString());
        EXPECT_EQ(menuBarLabelAccessibilityText(presentationOf(c.state, c.menuTitle)), c.spoken);
    }
}

TEST(MenuBarLabel, carriesTheStateColourOnlyWhenAbnormalAndAHalo)
{
    struct Case {
        MenuBarPresentationState state;
        std::optional<QRgb> dot;
    };
    using S = MenuBarPresentationState;
    const Case cases[] = {
        {S::collecting, std::nullopt},
        {S::observing, std::nullopt},
        {S::normal, std::nullopt},
        {S::highLoad, DashboardPalette::warning},
        {S::actionRecommended, DashboardPalette::danger},
    };
    for (const int size : {16, 22, 32, 48}) {
        for (const Case &c : cases) {
            SCOPED_TRACE(testing::Message() << "size " << size << " state " << int(c.state));
            const QImage icon = menuBarLabelImage(c.state, size, Qt::black);
            ASSERT_EQ(icon.size(), QSize(size, size));
            // The dot's centre sits at the lower right.
            const int at = size - static_cast<int>(size * 0.22) - 1;
            const QColor pixel = icon.pixelColor(at, at);
            if (c.dot) {
                EXPECT_EQ(pixel.rgb(), QColor::fromRgb(*c.dot).rgb());
            } else {
                EXPECT_NE(pixel.rgb() & 0xFFFFFF, DashboardPalette::warning & 0xFFFFFF);
                EXPECT_NE(pixel.rgb() & 0xFFFFFF, DashboardPalette::danger & 0xFFFFFF);
            }
            if (size < 32)
                continue; // below, no pixel lies wholly inside a stroke
            // The mark itself is in the ink: the middle of the left bracket.
            const QColor bracket =
                icon.pixelColor(static_cast<int>(size * 0.10), static_cast<int>(size * 0.20));
            EXPECT_GT(bracket.alpha(), 0);
            EXPECT_LT(bracket.lightness(), 100);
        }
    }
    // Just outside the left bracket's stroke, only the halo is painted; it
    // is light around dark ink and dark around light ink.
    const int size = 64;
    const QPoint outside(static_cast<int>(size * 0.10) - 3, static_cast<int>(size * 0.20));
    const QColor aroundDark =
        menuBarLabelImage(MenuBarPresentationState::normal, size, Qt::black).pixelColor(outside);
    const QColor aroundLight =
        menuBarLabelImage(MenuBarPresentationState::normal, size, Qt::white).pixelColor(outside);
    ASSERT_GT(aroundDark.alpha(), 0);
    ASSERT_GT(aroundLight.alpha(), 0);
    EXPECT_GT(aroundDark.lightness(), 200);
    EXPECT_LT(aroundLight.lightness(), 55);
}

} // namespace
