#pragma once

#include "presentation/kit/DashboardFonts.h"

#include <QColor>
#include <QPushButton>
#include <QRectF>

class QPainter;

// The fill of a destructive button: the palette's `danger` darkened along its
// own hue until white text on it reads at 5:1. `danger` itself gives white
// text 3.1:1, and a button drawn in it looks disabled.
inline constexpr QRgb kDestructiveFill = 0xFFCC3A20;

// A dialog's button, 32 high and at least 96 wide, medium 13, corners of
// radius 8. `neutral`: primary text on the control background with a divider
// border; `destructive`: white on kDestructiveFill. It shows its focus ring
// whenever it has the focus: in a dialog, the keyboard's target is what the
// user must see before pressing Space or Return.
class DashboardDialogButton final : public QPushButton {
    Q_OBJECT

public:
    enum class Tone { neutral, destructive };

    DashboardDialogButton(const QString &text, Tone tone, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Tone m_tone;
};

// Draws the ring that shows the keyboard focus on a button of `fill`: 2 px
// inside its edge, in the accent or in white, whichever stands out more from
// the fill (an accent ring on an accent fill would not show at all).
void paintFocusRing(QPainter &painter, const QRectF &area, double radius, const QColor &fill);
