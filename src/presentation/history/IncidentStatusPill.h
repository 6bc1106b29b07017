#pragma once

#include "dashboard/DashboardIncident.h"
#include "presentation/kit/DashboardWidgets.h"

class QPainter;

// The status pill of an incident: a dot and the status label in the status
// colour, on that colour at 11 % opacity. Rows of the list paint it (they are
// not widgets); the detail panel shows it as a PillLabel of the same style.
enum class IncidentPillPlace { tableRow, detailPanel };

PillLabel::Style incidentStatusPillStyle(DashboardIncidentStatus status, IncidentPillPlace place);

// Paints the pill at its natural size, leading-aligned and vertically centred
// in `cell`, cut to the cell's width when it does not fit.
void paintIncidentStatusPill(QPainter &painter, const QRectF &cell, DashboardIncidentStatus status,
                             const QFont &font);
