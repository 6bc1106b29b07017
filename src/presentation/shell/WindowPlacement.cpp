#include "presentation/shell/WindowPlacement.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr QSize kLargestDefault(1440, 900);
constexpr QSize kMinimum(960, 640);

// Twice the screen, never less than the default size a screen-less start gets.
int boundedSide(double requested, int available, int largestDefault)
{
    const double largest = std::max(2.0 * available, 1.0 * largestDefault);
    return static_cast<int>(std::lround(std::clamp(requested, 1.0, largest)));
}

} // namespace

QSize initialDashboardContentSize(const std::optional<QSizeF> &requested,
                                  const std::optional<QSize> &available)
{
    const QSize screen = available.value_or(kLargestDefault);
    if (!requested)
        return screen.boundedTo(kLargestDefault);
    return QSize(boundedSide(requested->width(), screen.width(), kLargestDefault.width()),
                 boundedSide(requested->height(), screen.height(), kLargestDefault.height()))
        .expandedTo(kMinimum);
}

QRect fitFrameInto(const QRect &content, const QMargins &frame, const QRect &available,
                   const QSize &minimum)
{
    const QSize room = available.size().shrunkBy(frame);
    const QSize size = content.size().boundedTo(room).expandedTo(minimum);
    QRect fitted(content.topLeft(), size);
    // The frame's right and bottom edges first, then its left and top, so that
    // the title bar stays reachable when the window is larger than the room.
    const QRect outer = fitted.marginsAdded(frame);
    QPoint shift;
    if (outer.right() > available.right())
        shift.rx() = available.right() - outer.right();
    if (outer.bottom() > available.bottom())
        shift.ry() = available.bottom() - outer.bottom();
    fitted.translate(shift);
    const QRect moved = fitted.marginsAdded(frame);
    if (moved.left() < available.left())
        fitted.translate(available.left() - moved.left(), 0);
    if (moved.top() < available.top())
        fitted.translate(0, available.top() - moved.top());
    return fitted;
}
