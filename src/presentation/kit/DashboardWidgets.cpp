#include "presentation/kit/DashboardWidgets.h"

#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardButtons.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/kit/DashboardPalette.h"

#include <QChildEvent>
#include <QCoreApplication>
#include <QLayout>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(DashboardWidgets)
};

// The sizes a layout reads from a widget: its hints as bounded by its own
// limits and its size policy (a width the policy ignores counts as none).
// Text that leaves them as they were cannot move anything.
struct LayoutSizes {
    QSize hint;
    QSize least;
    QSize most;
    bool operator==(const LayoutSizes &) const = default;
};

LayoutSizes layoutSizes(QWidget *widget)
{
    const QWidgetItem item(widget);
    return {item.sizeHint(), item.minimumSize(), item.maximumSize()};
}

void paintRoundedBox(QPainter &painter, const QRectF &rect, const QColor &fill,
                     const QColor &border, double borderWidth, double radius)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const double r = std::min({radius, rect.width() / 2.0, rect.height() / 2.0});
    if (fill.alpha() > 0) {
        QPainterPath path;
        path.addRoundedRect(rect, r, r);
        painter.fillPath(path, fill);
    }
    if (borderWidth > 0.0 && border.alpha() > 0) {
        const double half = borderWidth / 2.0;
        const QRectF inner = rect.adjusted(half, half, -half, -half);
        painter.setPen(QPen(border, borderWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(inner, std::max(0.0, r - half), std::max(0.0, r - half));
    }
}

} // namespace

TextLabel::TextLabel(const QString &text, double size, DashboardFontWeight weight, QRgb color,
                     QWidget *parent)
    : QLabel(parent), m_fullText(text), m_color(QColor::fromRgb(color))
{
    setDashboardFont(this, size, weight);
    setTextFormat(Qt::PlainText);
    // Inside a button a label would take the button's text role (and draw
    // in the button text colour): it keeps its own.
    setForegroundRole(QPalette::WindowText);
    QLabel::setText(text);
    QPalette labelPalette = palette();
    labelPalette.setColor(QPalette::WindowText, m_color);
    setPalette(labelPalette);
}

void TextLabel::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    QPalette labelPalette = palette();
    labelPalette.setColor(QPalette::WindowText, m_color);
    setPalette(labelPalette);
}

void TextLabel::setElided(bool elided)
{
    m_elided = elided;
    if (elided)
        setWordWrap(false);
    refresh();
}

void TextLabel::setMinimumScaleFactor(double factor)
{
    m_minimumScale = std::clamp(factor, 0.1, 1.0);
    refresh();
}

void TextLabel::setText(const QString &text)
{
    if (text == m_fullText)
        return;
    const LayoutSizes before = layoutSizes(this);
    m_fullText = text;
    // QLabel asks its layout for a pass on every change of text, and a window
    // full of figures would be laid out again each tick. A label whose sizes,
    // as its layout reads them, stay the same (a figure of fixed width, one
    // within the least width it keeps, a width its policy leaves to the
    // layout) would be put back where it is: it changes its text unseen by the layout
    // (Qt asks no layout for a hidden widget) and asks only when its size can
    // move. A wrapped text's height follows its words, so it always asks.
    const bool unseen = !wordWrap() && !isHidden();
    if (unseen)
        setAttribute(Qt::WA_WState_Hidden);
    // QLabel keeps the whole text even where it is drawn cut short: it is
    // what a screen reader reads.
    QLabel::setText(text);
    if (unseen)
        setAttribute(Qt::WA_WState_Hidden, false);
    refresh();
    if (!unseen || layoutSizes(this) != before)
        updateGeometry();
}

QSize TextLabel::minimumSizeHint() const
{
    if (!m_elided && m_minimumScale >= 1.0)
        return QLabel::minimumSizeHint();
    // Elided or shrinking text may become narrow; its height stays.
    const QSize hint = QLabel::minimumSizeHint();
    return {std::min(hint.width(), fontMetrics().horizontalAdvance(QStringLiteral("…")) * 2),
            hint.height()};
}

QSize TextLabel::sizeHint() const
{
    if (!m_elided && m_minimumScale >= 1.0)
        return QLabel::sizeHint();
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(m_fullText) + contentsMargins().left() +
                contentsMargins().right(),
            QLabel::sizeHint().height()};
}

void TextLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (m_elided || m_minimumScale < 1.0)
        refresh();
}

void TextLabel::refresh()
{
    if (!m_elided && m_minimumScale >= 1.0) {
        QLabel::setText(m_fullText);
        return;
    }
    update();
}

void TextLabel::paintEvent(QPaintEvent *event)
{
    if (!m_elided && m_minimumScale >= 1.0) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setPen(m_color);
    QFont drawFont = font();
    const QRect area = contentsRect();
    const int natural = QFontMetrics(drawFont).horizontalAdvance(m_fullText);
    if (natural > area.width() && m_minimumScale < 1.0 && natural > 0) {
        const double factor = std::max(m_minimumScale, double(area.width()) / natural);
        // Shrinking stops at the legible size; past it the text is cut instead.
        const double points = drawFont.pointSizeF();
        const double pixels = points * logicalDpiY() / 72.0;
        const double legible = legibleFontPixelSize(0.0, devicePixelRatioF());
        const double floor = pixels > 0.0 ? std::min(1.0, legible / pixels) : 1.0;
        drawFont.setPointSizeF(points * std::max(factor, floor));
    }
    painter.setFont(drawFont);
    const QString shown =
        QFontMetrics(drawFont).elidedText(m_fullText, Qt::ElideRight, area.width());
    painter.drawText(area, static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

RoundedBox::RoundedBox(QWidget *parent) : QWidget(parent) {}

void RoundedBox::setFill(const QColor &fill)
{
    if (fill == m_fill)
        return;
    m_fill = fill;
    update();
}

void RoundedBox::setBorder(const QColor &color, double width)
{
    m_border = color;
    m_borderWidth = width;
    update();
}

void RoundedBox::setCornerRadius(double radius)
{
    m_radius = radius;
    update();
}

void RoundedBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintRoundedBox(painter, QRectF(rect()), m_fill, m_border, m_borderWidth, m_radius);
}

PressableBox::PressableBox(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAccessibleRole(this, QAccessible::Button);
}

void PressableBox::setFill(const QColor &fill)
{
    if (fill == m_fill)
        return;
    m_fill = fill;
    update();
}

void PressableBox::setPressedFill(const QColor &fill)
{
    m_pressedFill = fill;
    update();
}

void PressableBox::setBorder(const QColor &color, double width)
{
    m_border = color;
    m_borderWidth = width;
    update();
}

void PressableBox::setCornerRadius(double radius)
{
    m_radius = radius;
    update();
}

QSize PressableBox::sizeHint() const
{
    return layout() ? layout()->sizeHint() : QSize(40, 24);
}

QSize PressableBox::minimumSizeHint() const
{
    return layout() ? layout()->minimumSize() : QSize(0, 0);
}

void PressableBox::childEvent(QChildEvent *event)
{
    QAbstractButton::childEvent(event);
    // The whole box takes the press, whatever lies in it.
    if (event->added() && event->child()->isWidgetType())
        static_cast<QWidget *>(event->child())->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void PressableBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor fill = m_fill;
    if (isDown()) {
        if (m_pressedFill.isValid()) {
            fill = m_pressedFill;
        } else if (fill.alpha() > 0) {
            fill.setAlphaF(fill.alphaF() * 0.82f);
        } else {
            fill = DashboardPalette::color(DashboardPalette::textPrimary, 0.05);
        }
    }
    paintRoundedBox(painter, QRectF(rect()), fill, m_border, m_borderWidth, m_radius);
    // Only a keyboard user needs to see where focus is.
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        const QColor behind =
            m_fill.alpha() > 0 ? m_fill : QColor::fromRgb(DashboardPalette::pageBackground);
        paintFocusRing(painter, QRectF(rect()), m_radius, behind);
    }
}

Dot::Dot(double diameter, const QColor &color, QWidget *parent)
    : QWidget(parent), m_diameter(diameter), m_color(color)
{
    const int side = static_cast<int>(std::ceil(diameter));
    setFixedSize(side, side);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Dot::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void Dot::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawEllipse(QRectF(rect()).center(), m_diameter / 2.0, m_diameter / 2.0);
}

HairLine::HairLine(Qt::Orientation orientation, QWidget *parent)
    : QWidget(parent), m_color(QColor::fromRgb(DashboardPalette::divider))
{
    if (orientation == Qt::Horizontal) {
        setFixedHeight(1);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    } else {
        setFixedWidth(1);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    }
    setAccessibilityHidden(this);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void HairLine::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void HairLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_color);
}

PillLabel::PillLabel(const QString &text, const Style &style, QWidget *parent)
    : QWidget(parent), m_text(text), m_style(style)
{
    setDashboardFont(this, style.fontSize, style.weight);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(text);
}

void PillLabel::setText(const QString &text)
{
    if (text == m_text)
        return;
    const LayoutSizes before = layoutSizes(this);
    m_text = text;
    setAccessibleName(text);
    if (m_elidable)
        setToolTip(text);
    // As for a TextLabel: a word of the same width lays nothing out.
    if (layoutSizes(this) != before)
        updateGeometry();
    update();
}

void PillLabel::setElidable(bool elidable)
{
    m_elidable = elidable;
    setSizePolicy(elidable ? QSizePolicy::Maximum : QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(elidable ? m_text : QString());
    updateGeometry();
}

void PillLabel::setStyle(const Style &style)
{
    if (style == m_style)
        return;
    const bool fontChanged = style.fontSize != m_style.fontSize || style.weight != m_style.weight;
    m_style = style;
    if (fontChanged)
        setDashboardFont(this, style.fontSize, style.weight);
    updateGeometry();
    update();
}

QSize PillLabel::sizeHint() const
{
    const QFontMetrics metrics(font());
    double width = metrics.horizontalAdvance(m_text) + 2 * m_style.horizontalPadding;
    if (m_style.dotDiameter > 0)
        width += m_style.dotDiameter + m_style.dotSpacing;
    const double height = metrics.height() + 2 * m_style.verticalPadding;
    return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
}

QSize PillLabel::minimumSizeHint() const
{
    QSize size = sizeHint();
    if (m_elidable) {
        // Room for the dot, a few characters and the ellipsis.
        double least =
            QFontMetrics(font()).horizontalAdvance(Words::tr(
                "不可…", "the least of an elided pill: a few characters and the ellipsis")) +
            2 * m_style.horizontalPadding;
        if (m_style.dotDiameter > 0)
            least += m_style.dotDiameter + m_style.dotSpacing;
        size.setWidth(std::min(size.width(), static_cast<int>(std::ceil(least))));
    }
    return size;
}

void PillLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area(rect());
    const double radius = m_style.cornerRadius < 0 ? area.height() / 2.0 : m_style.cornerRadius;
    QPainterPath path;
    path.addRoundedRect(area, radius, radius);
    painter.fillPath(path, m_style.background);
    double x = m_style.horizontalPadding;
    if (m_style.dotDiameter > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_style.text);
        painter.drawEllipse(QPointF(x + m_style.dotDiameter / 2.0, area.center().y()),
                            m_style.dotDiameter / 2.0, m_style.dotDiameter / 2.0);
        x += m_style.dotDiameter + m_style.dotSpacing;
    }
    painter.setPen(m_style.text);
    painter.setFont(font());
    const QRectF textRect(x, 0, area.width() - x - m_style.horizontalPadding + 1, area.height());
    painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font()).elidedText(m_text, Qt::ElideRight,
                                                     static_cast<int>(textRect.width())));
}

DashboardPrimaryButton::DashboardPrimaryButton(const QString &text, QWidget *parent)
    : QPushButton(text, parent)
{
    setFont(fixedDashboardFont(13, DashboardFontWeight::semibold));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    setMinimumHeight(40);
}

QSize DashboardPrimaryButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 32, std::max(40, metrics.height() + 16)};
}

QSize DashboardPrimaryButton::minimumSizeHint() const
{
    return sizeHint();
}

void DashboardPrimaryButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const double opacity = isDown() ? 0.82 : (isEnabled() ? 1.0 : 0.45);
    paintRoundedBox(painter, QRectF(rect()),
                    DashboardPalette::color(DashboardPalette::accent, opacity), Qt::transparent, 0,
                    11);
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
        paintFocusRing(painter, QRectF(rect()), 11, QColor::fromRgb(DashboardPalette::accent));
    painter.setPen(Qt::white);
    painter.setFont(font());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
}

void clearLayout(QLayout *layout)
{
    if (!layout)
        return;
    while (QLayoutItem *item = layout->takeAt(0)) {
        if (QWidget *widget = item->widget())
            delete widget;
        if (QLayout *child = item->layout())
            clearLayout(child);
        delete item;
    }
}
