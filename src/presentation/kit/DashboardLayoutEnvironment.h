#pragma once

#include "presentation/kit/DashboardLayoutMetrics.h"

class QWidget;

// Carries the layout metrics down the widget tree, as an environment: a
// widget asks for the metrics of the nearest ancestor that hosts them (the
// dashboard shell), and gets the defaults when it is outside any dashboard.
class DashboardLayoutHost {
public:
    virtual ~DashboardLayoutHost() = default;
    virtual const DashboardLayoutMetrics &layoutMetrics() const = 0;
};

DashboardLayoutMetrics dashboardLayoutOf(const QWidget *widget);

// Widgets whose arrangement or drawing depends on the metrics implement this;
// applyDashboardLayout calls it after fonts are re-applied.
class DashboardLayoutAware {
public:
    virtual ~DashboardLayoutAware() = default;
    virtual void applyLayout(const DashboardLayoutMetrics &layout) = 0;
};

// Re-applies every remembered dashboard font under `root` with `layout`'s
// scale, then tells every DashboardLayoutAware widget under it (root first,
// parents before children). Called by the host when the metrics change.
void applyDashboardLayout(QWidget *root, const DashboardLayoutMetrics &layout);
