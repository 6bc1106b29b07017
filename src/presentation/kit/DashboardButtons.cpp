#include "presentation/kit/DashboardButtons.h"

#include "presentation/kit/ColorContrast.h"
#include "presentation/kit/DashboardPalette.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

DashboardDialogButton::DashboardDialogButton(const QString &text, Tone tone, QWidget *parent)
    : QPushButton(text, parent), m_tone(tone)
{
    setFont(fixedDashboardFont(13, DashboardFontWeight::medium));
    setCursor(Qt::PointingHandCursor);
    setMinimumHeight(32);
    setMinimumWidth(96);
}

QSize DashboardDialogButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {std::max(96, metrics.horizontalAdvance(text()) + 32),
            std::max(32, metrics.height() + 12)};
}

QSize DashboardDialogButton::minimumSizeHint() const
{
    return sizeHint();
}

void DashboardDialogButton::paintEvent(QPaintEvent *)
{
    using namespace DashboardPalette;
    const bool destructive = m_tone == Tone::destructive;
    QColor fill = QColor::fromRgb(destructive ? kDestructiveFill : controlBackground);
    if (isDown())
        fill = fill.darker(destructive ? 115 : 104);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(area, 8, 8);
    painter.fillPath(shape, fill);
    if (!destructive) {
        painter.setPen(QPen(QColor::fromRgb(divider), 1.0));
        painter.drawPath(shape);
    }
    if (hasFocus())
        paintFocusRing(painter, QRectF(rect()), 8, fill);
    painter.setPen(destructive ? QColor::fromRgb(white) : QColor::fromRgb(textPrimary));
    painter.setFont(font());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
}

void paintFocusRing(QPainter &painter, const QRectF &area, double radius, const QColor &fill)
{
    using namespace DashboardPalette;
    const QColor accentRing = QColor::fromRgb(accent);
    const QColor whiteRing = QColor::fromRgb(white);
    const QColor ring =
        contrastRatio(accentRing, fill) >= contrastRatio(whiteRing, fill) ? accentRing : whiteRing;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ring, 2.0));
    painter.setBrush(Qt::NoBrush);
    const double inset = 2.0;
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset),
                            std::max(0.0, radius - inset), std::max(0.0, radius - inset));
    painter.restore();
}
