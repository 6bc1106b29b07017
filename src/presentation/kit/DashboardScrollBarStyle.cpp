#include "presentation/kit/DashboardScrollBarStyle.h"

#include "presentation/kit/DashboardPalette.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionSlider>

namespace {

constexpr int kMinimumThumb = 32;
// The thumb keeps this much clear track on each side.
constexpr int kInset = 2;

// The thumb's rectangle in the bar: the whole length is track, since there
// are no arrow buttons.
QRect thumbRect(const QStyleOptionSlider &bar)
{
    const bool horizontal = bar.orientation == Qt::Horizontal;
    const int length = horizontal ? bar.rect.width() : bar.rect.height();
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    int thumb = length;
    int offset = 0;
    if (range > 0) {
        thumb = int(qint64(length) * bar.pageStep / (range + bar.pageStep));
        thumb = std::clamp(thumb, std::min(kMinimumThumb, length), length);
        offset = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                 length - thumb, bar.upsideDown);
    }
    return horizontal ? QRect(bar.rect.left() + offset, bar.rect.top(), thumb, bar.rect.height())
                      : QRect(bar.rect.left(), bar.rect.top() + offset, bar.rect.width(), thumb);
}

} // namespace

int DashboardScrollBarStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                                         const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return kThickness;
    case PM_ScrollBarSliderMin:
        return kMinimumThumb;
    case PM_ScrollView_ScrollBarSpacing:
    case PM_ScrollView_ScrollBarOverlap:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int DashboardScrollBarStyle::styleHint(StyleHint hint, const QStyleOption *option,
                                       const QWidget *widget, QStyleHintReturn *returnData) const
{
    switch (hint) {
    // A bar that shows stays shown: what moves always has its bar.
    case SH_ScrollBar_Transient:
        return 0;
    case SH_ScrollBar_LeftClickAbsolutePosition:
        return 1;
    case SH_ScrollView_FrameOnlyAroundContents:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QRect DashboardScrollBarStyle::subControlRect(ComplexControl control,
                                              const QStyleOptionComplex *option,
                                              SubControl subControl, const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, subControl, widget);
    const QRect thumb = thumbRect(*bar);
    const bool horizontal = bar->orientation == Qt::Horizontal;
    switch (subControl) {
    case SC_ScrollBarSlider:
        return thumb;
    case SC_ScrollBarGroove:
        return bar->rect;
    case SC_ScrollBarSubPage:
        return horizontal ? QRect(bar->rect.topLeft(), QPoint(thumb.left() - 1, thumb.bottom()))
                          : QRect(bar->rect.topLeft(), QPoint(thumb.right(), thumb.top() - 1));
    case SC_ScrollBarAddPage:
        return horizontal
                   ? QRect(QPoint(thumb.right() + 1, thumb.top()), bar->rect.bottomRight())
                   : QRect(QPoint(thumb.left(), thumb.bottom() + 1), bar->rect.bottomRight());
    default:
        // No arrow buttons, no first and last buttons.
        return {};
    }
}

QStyle::SubControl DashboardScrollBarStyle::hitTestComplexControl(ComplexControl control,
                                                                  const QStyleOptionComplex *option,
                                                                  const QPoint &position,
                                                                  const QWidget *widget) const
{
    if (control != CC_ScrollBar)
        return QProxyStyle::hitTestComplexControl(control, option, position, widget);
    for (SubControl part : {SC_ScrollBarSlider, SC_ScrollBarSubPage, SC_ScrollBarAddPage}) {
        if (subControlRect(control, option, part, widget).contains(position))
            return part;
    }
    return SC_None;
}

void DashboardScrollBarStyle::drawComplexControl(ComplexControl control,
                                                 const QStyleOptionComplex *option,
                                                 QPainter *painter, const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    // The palette's own colours, not the desktop's: a dark desktop scheme
    // must not put a dark bar on the light dashboard.
    if (bar->maximum <= bar->minimum)
        return;
    const bool active = bar->state & (State_Sunken | State_MouseOver);
    const QRgb tone = active ? DashboardPalette::textSecondary : DashboardPalette::textTertiary;
    const QRectF thumb = QRectF(thumbRect(*bar)).adjusted(kInset, kInset, -kInset, -kInset);
    const double radius = std::min(thumb.width(), thumb.height()) / 2.0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(DashboardPalette::color(tone, active ? 0.8 : 0.55));
    painter->drawRoundedRect(thumb, radius, radius);
    painter->restore();
}

void installDashboardScrollBarStyle()
{
    // QApplication takes the style; the proxy wraps the desktop's.
    QApplication::setStyle(new DashboardScrollBarStyle);
}
