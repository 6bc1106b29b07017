#include "dashboard/DashboardIncident.h"

QString dashboardIncidentStatusName(DashboardIncidentStatus status)
{
    switch (status) {
    case DashboardIncidentStatus::observing: return QStringLiteral("observing");
    case DashboardIncidentStatus::improved: return QStringLiteral("improved");
    case DashboardIncidentStatus::recoveredWithoutAction:
        return QStringLiteral("recoveredWithoutAction");
    case DashboardIncidentStatus::noImprovement: return QStringLiteral("noImprovement");
    case DashboardIncidentStatus::insufficientData: return QStringLiteral("insufficientData");
    case DashboardIncidentStatus::actionFailed: return QStringLiteral("actionFailed");
    }
    return QStringLiteral("observing");
}
