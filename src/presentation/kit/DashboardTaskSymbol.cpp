#include "presentation/kit/DashboardTaskSymbol.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/SystemSymbols.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

DashboardTaskSymbol::DashboardTaskSymbol(const QString &symbolName, double side, QWidget *parent)
    : QWidget(parent), m_symbolName(symbolName), m_side(side)
{
    const int pixels = static_cast<int>(std::ceil(side));
    setFixedSize(pixels, pixels);
    setAccessibilityHidden(this);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DashboardTaskSymbol::setSymbolName(const QString &symbolName)
{
    if (symbolName == m_symbolName)
        return;
    m_symbolName = symbolName;
    update();
}

void DashboardTaskSymbol::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF square(0, 0, m_side, m_side);
    QPainterPath path;
    path.addRoundedRect(square, m_side * 0.22, m_side * 0.22);
    painter.fillPath(path, QColor::fromRgb(DashboardPalette::accent));
    const double glyph = m_side * 0.46;
    paintSystemSymbol(
        painter, m_symbolName,
        QRectF(square.center().x() - glyph / 2, square.center().y() - glyph / 2, glyph, glyph),
        Qt::white, SymbolWeight::medium);
}
