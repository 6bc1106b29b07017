#include "presentation/history/IncidentListModel.h"

#include "presentation/history/IncidentTexts.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(IncidentListModel)
};

} // namespace

IncidentListRow IncidentListRow::of(const DashboardIncident &incident, bool isSelected)
{
    IncidentListRow row{incident.id,
                        incidentStartTimeText(incident),
                        incidentTitle(incident),
                        incident.application,
                        incidentPeakSummary(incident),
                        incident.status,
                        isSelected};
    row.accessibleLabel = Words::tr("%1，%2，%3，%4，%5")
                              .arg(row.startTime, row.title, row.application, row.peakSummary,
                                   incidentStatusLabel(row.status));
    return row;
}

QVariant IncidentListModel::rowData(const IncidentListRow &row, int role) const
{
    return role == Qt::DisplayRole ? row.title : QVariant();
}

void IncidentListModel::setSelectedID(const std::optional<QUuid> &id)
{
    std::vector<IncidentListRow> next = rows();
    for (IncidentListRow &row : next)
        row.isSelected = id && row.key == *id;
    setRows(std::move(next));
}
