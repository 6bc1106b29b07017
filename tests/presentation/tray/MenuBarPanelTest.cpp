// The tray panel over made-up presentations, rendered offscreen: what it
// chooses to show and what it says and speaks.

#include "presentation/PresentationTesting.h"
#include "presentation/kit/Accessibility.h"
#include "presentation/tray/KilnWardenMenuBarPanel.h"
#include "presentation/tray/MenuBarAppearance.h"

#include <QApplication>
#include <QLabel>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using S = MenuBarPresentationState;

MenuBarPresentationTask task(const QString &application = QStringLiteral("clang++"))
{
    return {application, QStringLiteral("243%"), QStringLiteral("12 分钟")};
}

MenuBarPresentation presentation(S state, std::optional<MenuBarPresentationTask> primaryTask = {},
                                 std::optional<QString> statusMessage = {}, qint64 remaining = 0)
{
    return {.state = state,
            .headline = u"负载高"_s,
            .symbolName = u"exclamationmark.triangle.fill"_s,
            .cpu = {u"cpu"_s, u"CPU"_s, u"64%"_s, std::nullopt},
            .temperature = {u"temperature"_s, u"温度"_s, u"82°C"_s, std::nullopt},
            .fan = {u"fan"_s, u"风扇"_s, u"受限"_s, u"权限受限"_s},
            .statusMessage = std::move(statusMessage),
            .primaryTask = std::move(primaryTask),
            .remainingAttentionTaskCount = remaining};
}

// A state with no task and the message the store gives it.
MenuBarPresentation withMessage(S state)
{
    return presentation(state, {}, QString::fromUtf8(menuBarStateInfo(state).message));
}

// A shown panel, laid out as on screen.
struct ShownPanel {
    explicit ShownPanel(const MenuBarPresentation &p)
    {
        panel.setPresentation(p);
        panel.resize(panel.sizeHint());
        panel.show();
        QApplication::processEvents();
    }
    template <typename T = QWidget> T *child(const QString &name)
    {
        return panel.findChild<T *>(name);
    }
    bool shows(const QString &name)
    {
        QWidget *widget = child(name);
        return widget && widget->isVisibleTo(&panel);
    }
    KilnWardenMenuBarPanel panel;
};

TEST(MenuBarPanel, choosesTheTaskBoxTheMessageRowOrNeither)
{
    using D = MenuBarPanelDetail;
    const std::optional<QString> calm = withMessage(S::normal).statusMessage;
    const std::tuple<const char *, MenuBarPresentation, D> cases[] = {
        {"observing", withMessage(S::observing), D::message},
        // A calm state never names a task, even when handed one.
        {"normal with a task", presentation(S::normal, task(), calm), D::message},
        {"normal without message", presentation(S::normal), D::none},
        {"high load", presentation(S::highLoad, task()), D::primaryTask},
        {"action", presentation(S::actionRecommended, task(), calm), D::primaryTask},
        // An abnormal state without a task shows neither, message or not.
        {"action without task", presentation(S::actionRecommended, {}, calm), D::none},
    };
    for (const auto &[name, presented, detail] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(menuBarPanelDetail(presented), detail);
        ShownPanel shown(presented);
        EXPECT_EQ(shown.shows(QStringLiteral("menuBar-primary-task")), detail == D::primaryTask);
        EXPECT_EQ(shown.shows(QStringLiteral("menuBar-status-message")), detail == D::message);
        // The panel is exactly as tall as its content: a hidden box takes no room.
        EXPECT_EQ(shown.panel.height(), shown.panel.sizeHint().height());
    }
    // Showing the box makes the panel taller than showing nothing.
    ShownPanel withBox(presentation(S::highLoad, task()));
    ShownPanel without(presentation(S::highLoad));
    EXPECT_GT(withBox.panel.height(), without.panel.height() + 40);
}

TEST(MenuBarPanel, namesTheTasksAndSpeaksEachRowAsOneElement)
{
    installDashboardAccessibility();
    // Without others needing attention: no separator and no second text.
    for (const auto &[count, text] :
         {std::pair{qint64(-3), QString()}, {qint64(12), QStringLiteral("另有 12 个需关注任务")}}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(menuBarRemainingTaskText(count), text);
        ShownPanel shown(presentation(S::highLoad, task(), {}, count));
        auto *remaining = shown.child<QLabel>(QStringLiteral("menuBar-remaining-task-count"));
        ASSERT_NE(remaining, nullptr);
        EXPECT_EQ(remaining->isVisibleTo(&shown.panel), !text.isEmpty());
        EXPECT_EQ(accessibleText(remaining, QAccessible::Name), text);
        QStringList visibleTexts;
        for (QLabel *label :
             shown.child(QStringLiteral("menuBar-primary-task"))->findChildren<QLabel *>()) {
            if (label->isVisibleTo(&shown.panel))
                visibleTexts << label->text();
        }
        EXPECT_EQ(visibleTexts.contains(QStringLiteral("·")), !text.isEmpty());
        for (const char *shownText : {"主要负载", "clang++", "243%", "运行 12 分钟"})
            EXPECT_TRUE(visibleTexts.contains(QString::fromUtf8(shownText))) << shownText;
    }
    // Each row is spoken as one element.
    MenuBarPresentation p = presentation(S::highLoad, task());
    p.durationText = QStringLiteral("已持续 3 分钟");
    ShownPanel rows(p);
    // The short word shows; the full one is spoken.
    expectHeard(&rows.panel, {{u"menuBar-status"_s, u"负载高"_s, u"已持续 3 分钟"_s},
                              {u"menuBar-metric-cpu"_s, u"CPU 64%"_s},
                              {u"menuBar-metric-temperature"_s, u"温度 82°C"_s},
                              {u"menuBar-metric-fan"_s, u"风扇 权限受限"_s}});
    // The texts inside a combined row are not announced on their own.
    QAccessibleInterface *value = QAccessible::queryAccessibleInterface(
        rows.child(QStringLiteral("menuBar-metric-cpu"))->findChildren<QLabel *>().last());
    ASSERT_NE(value, nullptr);
    EXPECT_TRUE(value->state().invisible);
}

TEST(MenuBarPanel, aDarkWindowColourMeansTheDarkAppearance)
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x2B, 0x2B, 0x2B));
    EXPECT_TRUE(isDarkAppearance(palette));
    palette.setColor(QPalette::Window, QColor(0xEF, 0xF0, 0xF1));
    EXPECT_FALSE(isDarkAppearance(palette));
}

} // namespace
