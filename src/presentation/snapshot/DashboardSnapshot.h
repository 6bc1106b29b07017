#pragma once

#include "dashboard/DashboardModel.h"

#include <QImage>
#include <QSize>

class DashboardStore;

// Renders the dashboard window on `section` at a content size of `size`, as
// the user would see it, into an image. The window is built for the picture
// and destroyed afterwards; the store is only read.
QImage renderDashboardSnapshot(DashboardStore &store, DashboardSection section, QSize size);

// Lets queued work (layout requests, deferred deletes, queued store calls)
// run for about `milliseconds`.
void settleEvents(int milliseconds = 50);
