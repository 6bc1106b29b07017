#include "presentation/kit/SystemSymbols.h"

#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace {

// Stroke width in a 24-unit design square, by weight.
double strokeWidth(SymbolWeight weight)
{
    switch (weight) {
    case SymbolWeight::medium:
        return 2.0;
    case SymbolWeight::semibold:
        return 2.3;
    case SymbolWeight::bold:
        return 2.6;
    case SymbolWeight::regular:
        break;
    }
    return 1.7;
}

void paintPlaceholder(QPainter &painter, double stroke)
{
    painter.drawEllipse(QPointF(12, 12), 9, 9);
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(painter.pen().color());
    painter.drawEllipse(QPointF(12, 12), stroke, stroke);
    painter.restore();
}

} // namespace

QStringList systemSymbolNames()
{
    return {};
}

bool hasSystemSymbol(const QString &name)
{
    return systemSymbolNames().contains(name);
}

void paintSystemSymbol(QPainter &painter, const QString &name, const QRectF &box,
                       const QColor &color, SymbolWeight weight)
{
    Q_UNUSED(name);
    const double side = std::min(box.width(), box.height());
    if (!(side > 0.0))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(box.center().x() - side / 2.0, box.center().y() - side / 2.0);
    painter.scale(side / 24.0, side / 24.0);
    QPen pen(color, strokeWidth(weight), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    paintPlaceholder(painter, strokeWidth(weight));
    painter.restore();
}

QPixmap systemSymbolPixmap(const QString &name, double size, const QColor &color,
                           SymbolWeight weight, qreal devicePixelRatio)
{
    const int pixels = std::max(1, static_cast<int>(std::ceil(size * devicePixelRatio)));
    QPixmap pixmap(pixels, pixels);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paintSystemSymbol(painter, name, QRectF(0, 0, size, size), color, weight);
    return pixmap;
}

QIcon systemSymbolIcon(const QString &name, const QColor &color, SymbolWeight weight)
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64})
        icon.addPixmap(systemSymbolPixmap(name, size, color, weight));
    return icon;
}

SymbolView::SymbolView(const QString &name, double glyphSize, const QColor &color,
                       SymbolWeight weight, QWidget *parent)
    : QWidget(parent), m_name(name), m_glyphSize(glyphSize), m_color(color), m_weight(weight)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolView::setSymbol(const QString &name)
{
    if (name == m_name)
        return;
    m_name = name;
    update();
}

void SymbolView::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void SymbolView::setGlyphSize(double glyphSize)
{
    m_glyphSize = glyphSize;
    updateGeometry();
    update();
}

void SymbolView::setScalesWithText(bool scales)
{
    m_scalesWithText = scales;
    update();
}

double SymbolView::effectiveGlyphSize() const
{
    if (!m_scalesWithText)
        return m_glyphSize;
    return dashboardScaledFontSize(m_glyphSize, dashboardLayoutOf(this).typographyScale);
}

QSize SymbolView::sizeHint() const
{
    const int side = static_cast<int>(std::ceil(effectiveGlyphSize()));
    return {side, side};
}

void SymbolView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const double side = std::min({effectiveGlyphSize(), double(width()), double(height())});
    const QRectF box(rect().center().x() + 0.5 - side / 2.0, rect().center().y() + 0.5 - side / 2.0,
                     side, side);
    paintSystemSymbol(painter, m_name, box, m_color, m_weight);
}
