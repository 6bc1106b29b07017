#pragma once

#include "dashboard/DashboardIncident.h"
#include "presentation/kit/KeyedRowModel.h"

#include <QUuid>

#include <optional>

// One row of the event list, as shown: the incident's texts, formatted once
// when the incident changes rather than on every paint. Keyed by the
// incident's id; the label is the row's texts in reading order.
struct IncidentListRow {
    QUuid key;
    QString startTime;
    QString title;
    QString application;
    QString peakSummary;
    DashboardIncidentStatus status = DashboardIncidentStatus::observing;
    bool isSelected = false;
    QString accessibleLabel;

    bool operator==(const IncidentListRow &) const = default;

    static IncidentListRow of(const DashboardIncident &incident, bool isSelected);
    QString identifier() const
    {
        return QStringLiteral("incidentRow-") + key.toString(QUuid::WithoutBraces);
    }
};

// The listed incidents, newest first: a new incident is one inserted row at
// the top and the view keeps its scroll position across ticks.
class IncidentListModel final : public KeyedRowModel<IncidentListRow> {
public:
    using KeyedRowModel::KeyedRowModel;

    // The row painted as selected; the page owns the selection. Only the rows
    // that gain or lose it are announced.
    void setSelectedID(const std::optional<QUuid> &id);

protected:
    QVariant rowData(const IncidentListRow &row, int role) const override;
};
