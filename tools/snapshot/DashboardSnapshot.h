#pragma once

#include "presentation/shell/DashboardSection.h"

#include <QImage>
#include <QSize>
#include <QString>

class DashboardStore;

// Renders the dashboard window on `section` at a content size of `size`, as
// the user would see it, into an image. The window is built for the picture
// and destroyed afterwards; the store is only read. `press` names the
// identifier (objectName) of a button to click before the picture, such as a
// tab; an empty name or one that the page lacks clicks nothing.
QImage renderDashboardSnapshot(DashboardStore &store, DashboardSection section, QSize size,
                               const QString &press = {});

// Lets queued work (layout requests, deferred deletes, queued store calls)
// run for about `milliseconds`.
void settleEvents(int milliseconds = 50);
