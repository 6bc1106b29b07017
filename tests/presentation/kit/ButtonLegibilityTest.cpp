// Every kind of button reads clearly and shows where the keyboard is: the
// destructive button's text stands out from its fill, and the focus ring
// stands out from what lies under it, measured on the painted pixels.

#include "presentation/kit/ColorContrast.h"
#include "presentation/kit/DashboardButtons.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/tray/MenuBarPanelParts.h"

#include <QHash>
#include <QImage>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

using namespace Qt::StringLiterals;

// The colour most pixels have: a button's fill.
QColor mostFrequent(const QImage &image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y) | 0xFF000000];
    return QColor::fromRgb(std::max_element(counts.cbegin(), counts.cend()).key());
}

// The highest contrast of a pixel of `image` (where `where` accepts it)
// against `against`, or against the same pixel of `before`.
double highestContrast(const QImage &image, const std::function<QColor(int, int)> &against,
                       const std::function<bool(int, int)> &where)
{
    double best = 1.0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (where(x, y)) {
                best = std::max(best,
                                contrastRatio(QColor::fromRgb(image.pixel(x, y)), against(x, y)));
            }
        }
    }
    return best;
}

QImage paint(QWidget *button)
{
    button->repaint();
    return button->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

TEST(ButtonLegibility, DestructiveTextContrastAndAVisibleFocusRingOnEveryButton)
{
    // The ratio itself, on the two colours whose ratio everyone knows.
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::black, Qt::white), 21.0);
    EXPECT_DOUBLE_EQ(contrastRatio(Qt::gray, Qt::gray), 1.0);

    const struct {
        const char *name;
        std::function<QAbstractButton *()> make;
    } buttons[] = {
        {"destructive",
         [] {
             return new DashboardDialogButton(u"结束进程"_s,
                                              DashboardDialogButton::Tone::destructive);
         }},
        {"cancel",
         [] { return new DashboardDialogButton(u"取消"_s, DashboardDialogButton::Tone::neutral); }},
        {"primary", [] { return new DashboardPrimaryButton(u"打开终端"_s); }},
        {"panel open", [] { return new MenuBarPanelButton(u"打开仪表盘"_s, true); }},
        {"panel quit", [] { return new MenuBarPanelButton(u"退出"_s, false); }},
    };
    for (const auto &test : buttons) {
        SCOPED_TRACE(test.name);
        // On white, as in a dialog, on a page and in the light panel.
        QWidget window;
        QPalette white = window.palette();
        white.setColor(QPalette::Window, Qt::white);
        window.setPalette(white);
        window.setAutoFillBackground(true);
        auto *other = new QWidget(&window);
        other->setFocusPolicy(Qt::StrongFocus);
        QAbstractButton *button = test.make();
        button->setParent(&window);
        button->setGeometry(10, 10, 140, 40);
        window.resize(200, 80);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        other->setFocus(Qt::TabFocusReason);
        const QImage unfocused = paint(button);
        if (QByteArray(test.name) == "destructive") {
            const QColor fill = mostFrequent(unfocused);
            EXPECT_GE(highestContrast(
                          unfocused, [&](int, int) { return fill; }, [](int, int) { return true; }),
                      4.5)
                << fill.name().toStdString();
        }
        button->setFocus(Qt::TabFocusReason);
        window.setAttribute(Qt::WA_KeyboardFocusChange);
        const QImage focused = paint(button);
        // The ring: the pixels that focus changed, against what was there.
        EXPECT_GE(highestContrast(
                      focused, [&](int x, int y) { return QColor::fromRgb(unfocused.pixel(x, y)); },
                      [&](int x, int y) { return focused.pixel(x, y) != unfocused.pixel(x, y); }),
                  3.0);
    }
}

} // namespace
