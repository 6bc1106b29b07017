#pragma once

#include "presentation/shell/DashboardSection.h"

#include <QSize>
#include <QStringList>

class DashboardStore;
class QWidget;

// Looks over a shown, settled window for what a user would see as broken,
// one line per finding, each starting with the widget's name:
// - a visible widget cut by its window or by a viewport with no visible
//   scroll bar in that direction, or squeezed below its minimum size;
// - a scroll area whose content can move with no visible bar;
// - column headings more than 1 pixel off the cells under them (the sensor
//   table, the event list);
// - a label whose text is smaller than the legibility floor (11 pixels
//   below a device pixel ratio of 2);
// - visible siblings that overlap.
// An empty list means nothing was found; it is a net, not a proof.
QStringList checkWindowLayout(const QWidget *window);

// The same for the dashboard window on `section` at `size`, built for the
// check and destroyed afterwards.
QStringList checkDashboardLayout(DashboardStore &store, DashboardSection section, QSize size);
