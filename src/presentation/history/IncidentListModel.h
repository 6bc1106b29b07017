#pragma once

#include "dashboard/DashboardIncident.h"

#include <QAbstractListModel>
#include <QSet>
#include <QUuid>

#include <optional>
#include <vector>

// One row of the event list, as shown: the incident's texts, formatted once
// when the incident changes rather than on every paint.
struct IncidentListRow {
    QUuid id;
    QString startTime;
    QString title;
    QString application;
    QString peakSummary;
    DashboardIncidentStatus status = DashboardIncidentStatus::observing;

    bool operator==(const IncidentListRow &) const = default;

    static IncidentListRow of(const DashboardIncident &incident);
};

// The listed incidents, newest first. `setRows` updates by id (removes what is
// gone, inserts what is new, moves what moved, announces what changed), never
// by a reset, so the view keeps its scroll position across ticks, and a new
// incident is one inserted row at the top.
//
// Rows are not widgets, so what a screen reader learns of a row is in roles:
// Qt::AccessibleTextRole is its label (the row's texts in reading order),
// IdentifierRole its identifier ("incidentRow-" and the incident's id) and
// AccessibleValueRole its value ("已选择" on the selected row, else empty).
class IncidentListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        IdentifierRole = Qt::UserRole + 1,
        AccessibleValueRole,
        IdRole,
        StartTimeRole,
        TitleRole,
        ApplicationRole,
        PeakSummaryRole,
        StatusRole, // DashboardIncidentStatus as int
        StatusLabelRole,
        SelectedRole,
    };

    explicit IncidentListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setRows(std::vector<IncidentListRow> rows);
    const std::vector<IncidentListRow> &rows() const { return m_rows; }

    // The row painted as selected; the page owns the selection.
    void setSelectedID(const std::optional<QUuid> &id);
    std::optional<int> rowOf(const QUuid &id) const;

private:
    void removeMissing(const QSet<QUuid> &kept);
    void announceChanged(int row);

    std::vector<IncidentListRow> m_rows;
    std::optional<QUuid> m_selectedID;
};
