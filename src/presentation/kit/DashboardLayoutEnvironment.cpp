#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QWidget>

namespace dashboard_fonts_detail {
bool reapplyDashboardFont(QWidget *widget, const DashboardLayoutMetrics &layout);
}

DashboardLayoutMetrics dashboardLayoutOf(const QWidget *widget)
{
    for (const QWidget *current = widget; current; current = current->parentWidget()) {
        if (const auto *host = dynamic_cast<const DashboardLayoutHost *>(current))
            return host->layoutMetrics();
    }
    return {};
}

void applyDashboardLayout(QWidget *root, const DashboardLayoutMetrics &layout)
{
    if (!root)
        return;
    dashboard_fonts_detail::reapplyDashboardFont(root, layout);
    const QList<QWidget *> descendants = root->findChildren<QWidget *>();
    for (QWidget *widget : descendants)
        dashboard_fonts_detail::reapplyDashboardFont(widget, layout);
    // Parents arrange before children, so a child sees its final place.
    if (auto *aware = dynamic_cast<DashboardLayoutAware *>(root))
        aware->applyLayout(layout);
    for (QWidget *widget : descendants) {
        if (auto *aware = dynamic_cast<DashboardLayoutAware *>(widget))
            aware->applyLayout(layout);
    }
}
