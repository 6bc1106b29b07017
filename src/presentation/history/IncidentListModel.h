#pragma once

#include "dashboard/DashboardIncident.h"
#include "presentation/kit/KeyedRowModel.h"

#include <QUuid>

#include <optional>

// One row of the event list, as shown: the incident's texts, formatted once
// when the incident changes rather than on every paint. Keyed by the
// incident's id.
struct IncidentListRow {
    QUuid key;
    QString startTime;
    QString title;
    QString application;
    QString peakSummary;
    DashboardIncidentStatus status = DashboardIncidentStatus::observing;

    bool operator==(const IncidentListRow &) const = default;

    static IncidentListRow of(const DashboardIncident &incident);
};

// The listed incidents, newest first: a new incident is one inserted row at
// the top and the view keeps its scroll position across ticks. Its roles are
// RowRole's: the label is the row's texts in reading order, the identifier
// "incidentRow-" and the incident's id, the value "已选择" on the selected row
// and empty on the others.
class IncidentListModel final : public KeyedRowModel<IncidentListRow> {
public:
    using KeyedRowModel::KeyedRowModel;

    QVariant data(const QModelIndex &index, int role) const override;

    // The row painted as selected; the page owns the selection.
    void setSelectedID(const std::optional<QUuid> &id);
    bool isSelected(int row) const { return m_selectedID && rowAt(row).key == *m_selectedID; }

private:
    std::optional<QUuid> m_selectedID;
};
