#include "presentation/tray/KilnWardenMenuBarLabel.h"

#include "presentation/kit/KilnWardenMark.h"
#include "presentation/tray/MenuBarAppearance.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>

namespace {

// The halo around each stroke and the dot's share of the icon, in pixels and
// as a fraction of the side. Both were chosen by eye at 16 to 24 pixels.
constexpr double kHaloPixels = 0.9;
constexpr double kDotShare = 0.44;
constexpr double kDotGapShare = 0.09;

void strokeMarkOutline(QPainter &painter, const QRectF &canvas, const QColor &color,
                       double extraUnits)
{
    const double side = std::min(canvas.width(), canvas.height());
    painter.save();
    painter.translate(canvas.left() + (canvas.width() - side) * 0.5,
                      canvas.top() + (canvas.height() - side) * 0.5);
    painter.scale(side / 100.0, side / 100.0);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, KilnWardenMarkGeometry::bracketLineWidth + 2 * extraUnits,
                        Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(KilnWardenMarkGeometry::brackets());
    painter.setPen(QPen(color, KilnWardenMarkGeometry::pulseLineWidth + 2 * extraUnits,
                        Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (int segment = 0; segment < 3; ++segment)
        painter.drawPath(KilnWardenMarkGeometry::pulseSegment(segment));
    painter.restore();
}

} // namespace

QString menuBarLabelAccessibilityText(const MenuBarPresentation &presentation)
{
    return menuBarStateText(menuBarStateInfo(presentation.state).spokenTitle)
        .arg(presentation.menuTitle);
}

QImage menuBarLabelImage(MenuBarPresentationState state, int pixelSize, const QColor &ink)
{
    const int size = std::max(1, pixelSize);
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);

    const QRectF canvas(0, 0, size, size);
    QColor halo = ink.lightness() < 128 ? QColor(255, 255, 255) : QColor(0, 0, 0);
    halo.setAlphaF(0.85f);
    strokeMarkOutline(painter, canvas, halo, kHaloPixels * 100.0 / size);
    paintKilnWardenMark(painter, canvas, KilnWardenMarkPalette::templateTint, false, ink);

    if (isAbnormalMenuBarState(state)) {
        const double diameter = size * kDotShare;
        const double gap = size * kDotGapShare;
        const QPointF centre(size - diameter / 2.0, size - diameter / 2.0);
        // Cut a ring out of the mark so the dot stands apart on any panel.
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawEllipse(centre, diameter / 2.0 + gap, diameter / 2.0 + gap);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setBrush(halo);
        painter.drawEllipse(centre, diameter / 2.0 + gap * 0.5, diameter / 2.0 + gap * 0.5);
        painter.setBrush(menuBarStateColor(state, false));
        painter.drawEllipse(centre, diameter / 2.0, diameter / 2.0);
    }
    return image;
}

QIcon menuBarLabelIcon(MenuBarPresentationState state, const QColor &ink)
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(QPixmap::fromImage(menuBarLabelImage(state, size, ink)));
    return icon;
}
