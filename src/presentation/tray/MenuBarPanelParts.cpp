#include "presentation/tray/MenuBarPanelParts.h"

#include "presentation/kit/DashboardButtons.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/tray/MenuBarAppearance.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int kButtonMinimumHeight = 32;
constexpr double kButtonRadius = 7.0;

} // namespace

MenuBarPanelLabel::MenuBarPanelLabel(double pixelSize, DashboardFontWeight weight,
                                     DashboardFontDesign design, QWidget *parent)
    : QLabel(parent)
{
    setFont(fixedDashboardFont(pixelSize, weight, design));
    setTextFormat(Qt::PlainText);
    setColor(Qt::black);
}

void MenuBarPanelLabel::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    QPalette labelPalette = palette();
    labelPalette.setColor(QPalette::WindowText, color);
    setPalette(labelPalette);
}

void MenuBarPanelLabel::setElided(bool elided)
{
    m_elided = elided;
    updateGeometry();
    update();
}

QSize MenuBarPanelLabel::minimumSizeHint() const
{
    const QSize hint = QLabel::minimumSizeHint();
    if (!m_elided)
        return hint;
    return {std::min(hint.width(), fontMetrics().horizontalAdvance(QStringLiteral("…")) * 2),
            hint.height()};
}

void MenuBarPanelLabel::paintEvent(QPaintEvent *event)
{
    const QRect area = contentsRect();
    if (!m_elided || fontMetrics().horizontalAdvance(text()) <= area.width()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setPen(m_color);
    painter.setFont(font());
    painter.drawText(area, static_cast<int>(alignment()) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
}

MenuBarPanelButton::MenuBarPanelButton(const QString &text, bool prominent, QWidget *parent)
    : QPushButton(text, parent), m_prominent(prominent)
{
    setFont(fixedDashboardFont(13, prominent ? DashboardFontWeight::medium
                                             : DashboardFontWeight::regular));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumHeight(kButtonMinimumHeight);
}

void MenuBarPanelButton::setDarkAppearance(bool dark)
{
    if (dark == m_dark)
        return;
    m_dark = dark;
    update();
}

QSize MenuBarPanelButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 24,
            std::max(kButtonMinimumHeight, metrics.height() + 12)};
}

QSize MenuBarPanelButton::minimumSizeHint() const
{
    return sizeHint();
}

void MenuBarPanelButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const MenuBarPanelColors colors = menuBarPanelColors(m_dark);
    const QRectF area = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(area, kButtonRadius, kButtonRadius);
    QColor text;
    // What lies under the ring: the accent, or the panel seen through the
    // faint fill of the plain button.
    QColor behind = QColor::fromRgb(DashboardPalette::accent);
    if (m_prominent) {
        painter.fillPath(shape,
                         DashboardPalette::color(DashboardPalette::accent, isDown() ? 0.82 : 1.0));
        text = Qt::white;
    } else {
        painter.fillPath(shape, isDown() ? colors.buttonPressFill : colors.buttonFill);
        painter.setPen(QPen(colors.buttonBorder, 1.0));
        painter.drawPath(shape);
        text = colors.primaryText;
        behind = colors.background;
    }
    // Only a keyboard user needs to see where focus is.
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
        paintFocusRing(painter, area, kButtonRadius, behind);
    painter.setPen(text);
    painter.setFont(font());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, this->text());
}
