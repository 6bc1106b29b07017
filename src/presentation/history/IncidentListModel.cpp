#include "presentation/history/IncidentListModel.h"

#include "presentation/history/IncidentTexts.h"
#include "sampling/Text.h"

IncidentListRow IncidentListRow::of(const DashboardIncident &incident)
{
    return {incident.id,          incidentStartTimeText(incident), incidentTitle(incident),
            incident.application, incidentPeakSummary(incident),   incident.status};
}

QVariant IncidentListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const IncidentListRow &row = rowAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return row.title;
    case Qt::AccessibleTextRole:
        return kwText("%1，%2，%3，%4，%5")
            .arg(row.startTime, row.title, row.application, row.peakSummary,
                 incidentStatusLabel(row.status));
    case RowRole::identifier:
        return QStringLiteral("incidentRow-") + row.key.toString(QUuid::WithoutBraces);
    case RowRole::accessibleValue:
        return isSelected(index.row()) ? kwText("已选择") : QString();
    case RowRole::selected:
        return isSelected(index.row());
    case RowRole::key:
        return row.key;
    default:
        break;
    }
    return {};
}

void IncidentListModel::setSelectedID(const std::optional<QUuid> &id)
{
    if (id == m_selectedID)
        return;
    const std::optional<QUuid> previous = m_selectedID;
    m_selectedID = id;
    for (const std::optional<QUuid> &touched : {previous, id}) {
        const int row = touched ? rowOf(*touched) : -1;
        if (row >= 0)
            emit dataChanged(index(row), index(row));
    }
}
