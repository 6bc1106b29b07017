#include "snapshot/LayoutCheck.h"

#include "presentation/hardware/HardwareSensorTable.h"
#include "presentation/history/IncidentListPanel.h"
#include "presentation/history/IncidentRowDelegate.h"
#include "presentation/shell/DashboardWindow.h"
#include "snapshot/DashboardSnapshot.h"

#include <QAbstractScrollArea>
#include <QFocusFrame>
#include <QLabel>
#include <QListView>
#include <QScrollBar>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr double kLegibilityFloor = 11.0;

// The widget's objectName, or its class inside the nearest named ancestor.
QString nameOf(const QWidget *widget)
{
    if (!widget->objectName().isEmpty())
        return widget->objectName();
    QString name = QString::fromLatin1(widget->metaObject()->className());
    for (const QWidget *up = widget->parentWidget(); up; up = up->parentWidget()) {
        if (!up->objectName().isEmpty())
            return name + QStringLiteral(" in ") + up->objectName();
    }
    return name;
}

QRect rectIn(const QWidget *window, const QWidget *widget)
{
    return {widget->mapTo(window, QPoint()), widget->size()};
}

bool shows(const QWidget *widget)
{
    return widget->isVisible() && !widget->isWindow() && widget->width() > 0 &&
           widget->height() > 0 && !qobject_cast<const QFocusFrame *>(widget);
}

bool barShows(const QScrollBar *bar)
{
    return bar->isVisible() && bar->maximum() > bar->minimum();
}

// The scroll area whose viewport `widget` is, if any.
const QAbstractScrollArea *areaOfViewport(const QWidget *widget)
{
    const auto *area = qobject_cast<const QAbstractScrollArea *>(widget->parentWidget());
    return area && area->viewport() == widget ? area : nullptr;
}

// The first ancestor that cuts `widget` where nothing lets the user reach
// the rest; a viewport with a visible bar lets them, in its direction.
std::optional<QString> cutBy(const QWidget *window, const QWidget *widget)
{
    QRect rect = rectIn(window, widget);
    for (const QWidget *up = widget->parentWidget(); up; up = up->parentWidget()) {
        const QRect outer = up == window ? window->rect() : rectIn(window, up);
        const QAbstractScrollArea *area = areaOfViewport(up);
        const bool vertical = area && barShows(area->verticalScrollBar());
        const bool horizontal = area && barShows(area->horizontalScrollBar());
        const int below = rect.bottom() - outer.bottom();
        const int above = outer.top() - rect.top();
        const int right = rect.right() - outer.right();
        const int left = outer.left() - rect.left();
        if ((!vertical && (below > 0 || above > 0)) || (!horizontal && (right > 0 || left > 0))) {
            return QStringLiteral("cut by %1 (%2 px below, %3 above, %4 right, %5 left)")
                .arg(up == window ? QStringLiteral("the window") : nameOf(up))
                .arg(std::max(0, below))
                .arg(std::max(0, above))
                .arg(std::max(0, right))
                .arg(std::max(0, left));
        }
        rect = rect.intersected(outer);
        // Scrolled wholly out of sight: the bar reaches it.
        if (rect.isEmpty() || up == window)
            break;
    }
    return std::nullopt;
}

// A layout that has less room than its items need squeezes them below their
// minimum: nothing leaves its parent, yet a fixed block loses its bottom.
std::optional<QString> squeezed(const QWidget *widget)
{
    const QSizePolicy policy = widget->sizePolicy();
    const QSize hint = widget->minimumSizeHint();
    const int width = widget->minimumWidth() > 0                          ? widget->minimumWidth()
                      : policy.horizontalPolicy() == QSizePolicy::Ignored ? 0
                                                                          : hint.width();
    // What wraps needs the height its width gives it; a container of such
    // texts has no minimum height worth the name, so only the texts count.
    const int height =
        widget->minimumHeight() > 0 ? widget->minimumHeight()
        : qobject_cast<const QLabel *>(widget) && widget->hasHeightForWidth()
            ? widget->heightForWidth(widget->width())
        : widget->hasHeightForWidth() || policy.verticalPolicy() == QSizePolicy::Ignored
            ? 0
            : hint.height();
    if (widget->width() >= width && widget->height() >= height)
        return std::nullopt;
    return QStringLiteral("squeezed to %1×%2, needs %3×%4")
        .arg(widget->width())
        .arg(widget->height())
        .arg(width)
        .arg(height);
}

void checkScrolling(const QAbstractScrollArea *area, QStringList &findings)
{
    for (const QScrollBar *bar : {area->verticalScrollBar(), area->horizontalScrollBar()}) {
        if (bar->maximum() > bar->minimum() && !bar->isVisible())
            findings << nameOf(area) + QStringLiteral(": content moves %1 px with no visible bar")
                                           .arg(bar->maximum() - bar->minimum());
    }
}

void checkAlignment(const QWidget *window, const QString &what, const std::vector<int> &headings,
                    const std::vector<int> &cells, QStringList &findings)
{
    for (std::size_t i = 0; i < headings.size() && i < cells.size(); ++i) {
        if (std::abs(headings[i] - cells[i]) > 1)
            findings << what + QStringLiteral(": column %1 heading at x %2, cells at x %3")
                                   .arg(i)
                                   .arg(headings[i])
                                   .arg(cells[i]);
    }
    Q_UNUSED(window);
}

std::vector<int> cellLefts(const QWidget *window, const HardwareSensorTableLine *line)
{
    std::vector<int> lefts;
    const QPoint origin = line->mapTo(window, QPoint());
    for (const QRect &cell : line->cellGeometries())
        lefts.push_back(origin.x() + cell.left());
    return lefts;
}

void checkSensorTable(const QWidget *window, const HardwareSensorTable *table,
                      QStringList &findings)
{
    const std::vector<int> headings = cellLefts(window, table->header());
    for (int i = 0; i < table->lineCount(); ++i) {
        if (table->line(i)->isVisible())
            checkAlignment(window, nameOf(table->line(i)), headings,
                           cellLefts(window, table->line(i)), findings);
    }
}

// The captions are the panel's labels on the line above the list, left to
// right; the rows' texts start where the delegate puts them.
void checkIncidentList(const QWidget *window, const IncidentListPanel *panel, QStringList &findings)
{
    const QListView *view = panel->listView();
    const auto *delegate = qobject_cast<const IncidentRowDelegate *>(view->itemDelegate());
    if (!delegate || !view->isVisible())
        return;
    const QWidget *viewport = view->viewport();
    const int top = viewport->mapTo(window, QPoint()).y();
    std::vector<const QLabel *> captions;
    for (const QLabel *label : panel->findChildren<const QLabel *>()) {
        const QRect rect = rectIn(window, label);
        if (label->isVisible() && rect.bottom() < top && rect.bottom() >= top - 40)
            captions.push_back(label);
    }
    std::sort(captions.begin(), captions.end(), [window](const QLabel *a, const QLabel *b) {
        return a->mapTo(window, QPoint()).x() < b->mapTo(window, QPoint()).x();
    });
    std::vector<int> headings;
    for (const QLabel *caption : captions)
        headings.push_back(caption->mapTo(window, QPoint()).x() +
                           caption->contentsMargins().left());
    const auto widths =
        delegate->columnWidths(view, viewport->width());
    const auto offsets = eventHistoryColumnTextOffsets(widths);
    std::vector<int> cells;
    const int left = viewport->mapTo(window, QPoint()).x();
    for (int offset : offsets)
        cells.push_back(left + offset);
    checkAlignment(window, nameOf(view), headings, cells, findings);
}

double pixelSize(const QWidget *widget)
{
    const QFont font = widget->font();
    return font.pixelSize() > 0 ? font.pixelSize()
                                : font.pointSizeF() * widget->logicalDpiY() / 72.0;
}

void checkSiblings(const QWidget *parent, QStringList &findings)
{
    std::vector<const QWidget *> children;
    for (const QObject *object : parent->children()) {
        const auto *child = qobject_cast<const QWidget *>(object);
        if (child && shows(child))
            children.push_back(child);
    }
    for (std::size_t i = 0; i < children.size(); ++i) {
        for (std::size_t j = i + 1; j < children.size(); ++j) {
            const QRect shared = children[i]->geometry().intersected(children[j]->geometry());
            if (!shared.isEmpty())
                findings << nameOf(children[i]) + QStringLiteral(": overlaps %1 by %2×%3 px")
                                                      .arg(nameOf(children[j]))
                                                      .arg(shared.width())
                                                      .arg(shared.height());
        }
    }
}

} // namespace

QStringList checkWindowLayout(const QWidget *window)
{
    QStringList findings;
    const bool lowDensity = window->devicePixelRatioF() < 2.0;
    QSet<const QWidget *> cut;
    checkSiblings(window, findings);
    for (const QWidget *widget : window->findChildren<const QWidget *>()) {
        if (!shows(widget))
            continue;
        // A cut container speaks for what it holds.
        const bool insideCut = [&] {
            for (const QWidget *up = widget->parentWidget(); up; up = up->parentWidget()) {
                if (cut.contains(up))
                    return true;
            }
            return false;
        }();
        if (!insideCut) {
            std::optional<QString> problem = cutBy(window, widget);
            if (!problem)
                problem = squeezed(widget);
            if (problem) {
                cut.insert(widget);
                findings << nameOf(widget) + QStringLiteral(": ") + *problem;
            }
        }
        if (const auto *area = qobject_cast<const QAbstractScrollArea *>(widget))
            checkScrolling(area, findings);
        if (const auto *table = qobject_cast<const HardwareSensorTable *>(widget))
            checkSensorTable(window, table, findings);
        if (const auto *panel = qobject_cast<const IncidentListPanel *>(widget))
            checkIncidentList(window, panel, findings);
        if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            const double size = pixelSize(label);
            if (lowDensity && !label->text().isEmpty() && size < kLegibilityFloor - 0.01)
                findings << nameOf(label) +
                                QStringLiteral(": text \"%1\" at %2 px, under the floor of %3")
                                    .arg(label->text().left(16))
                                    .arg(size, 0, 'f', 1)
                                    .arg(kLegibilityFloor);
        }
        checkSiblings(widget, findings);
    }
    return findings;
}

QStringList checkDashboardLayout(DashboardStore &store, DashboardSection section, QSize size)
{
    DashboardWindow window(store, section, [] {});
    window.resize(size);
    window.show();
    settleEvents();
    QStringList findings = checkWindowLayout(&window);
    window.hide();
    return findings;
}
