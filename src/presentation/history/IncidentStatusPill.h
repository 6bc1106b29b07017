#pragma once

#include "dashboard/DashboardIncident.h"
#include "presentation/kit/DashboardWidgets.h"

class QPainter;

// The status pill of an incident: a dot and the status label in the status
// colour, on that colour at 11 % opacity. Rows of the list paint it (they are
// not widgets); the detail panel shows it as a PillLabel of the same style.
enum class IncidentPillPlace { tableRow, detailPanel };

PillLabel::Style incidentStatusPillStyle(DashboardIncidentStatus status, IncidentPillPlace place);

// The pill's natural width in the table's rows, and the widest of any status.
double incidentStatusPillWidth(DashboardIncidentStatus status, const QFont &font);
double widestIncidentStatusPillWidth(const QFont &font);

// Paints the pill at its natural size, leading-aligned and vertically centred
// in `cell`, cut to the cell's width when it does not fit.
void paintIncidentStatusPill(QPainter &painter, const QRectF &cell, DashboardIncidentStatus status,
                             const QFont &font);
