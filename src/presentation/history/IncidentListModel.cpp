#include "presentation/history/IncidentListModel.h"

#include "presentation/history/IncidentTexts.h"
#include "sampling/Text.h"

#include <QSet>

#include <algorithm>

IncidentListRow IncidentListRow::of(const DashboardIncident &incident)
{
    return {incident.id,          incidentStartTimeText(incident), incidentTitle(incident),
            incident.application, incidentPeakSummary(incident),   incident.status};
}

IncidentListModel::IncidentListModel(QObject *parent) : QAbstractListModel(parent) {}

int IncidentListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant IncidentListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= rowCount())
        return {};
    const IncidentListRow &row = m_rows[std::size_t(index.row())];
    const bool selected = m_selectedID && *m_selectedID == row.id;
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return row.title;
    case Qt::AccessibleTextRole:
        return kwText("%1，%2，%3，%4，%5")
            .arg(row.startTime, row.title, row.application, row.peakSummary,
                 incidentStatusLabel(row.status));
    case IdentifierRole:
        return QStringLiteral("incidentRow-") + row.id.toString(QUuid::WithoutBraces);
    case AccessibleValueRole:
        return selected ? kwText("已选择") : QString();
    case IdRole:
        return row.id;
    case StartTimeRole:
        return row.startTime;
    case ApplicationRole:
        return row.application;
    case PeakSummaryRole:
        return row.peakSummary;
    case StatusRole:
        return static_cast<int>(row.status);
    case StatusLabelRole:
        return incidentStatusLabel(row.status);
    case SelectedRole:
        return selected;
    default:
        break;
    }
    return {};
}

QHash<int, QByteArray> IncidentListModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractListModel::roleNames();
    names.insert(IdentifierRole, "identifier");
    names.insert(AccessibleValueRole, "accessibleValue");
    names.insert(IdRole, "incidentID");
    names.insert(StartTimeRole, "startTime");
    names.insert(TitleRole, "title");
    names.insert(ApplicationRole, "application");
    names.insert(PeakSummaryRole, "peakSummary");
    names.insert(StatusRole, "status");
    names.insert(StatusLabelRole, "statusLabel");
    names.insert(SelectedRole, "selected");
    return names;
}

std::optional<int> IncidentListModel::rowOf(const QUuid &id) const
{
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].id == id)
            return static_cast<int>(row);
    }
    return std::nullopt;
}

void IncidentListModel::announceChanged(int row)
{
    const QModelIndex changed = index(row);
    emit dataChanged(changed, changed);
}

void IncidentListModel::removeMissing(const QSet<QUuid> &kept)
{
    // From the bottom up, one contiguous run at a time, so the indices above
    // stay valid and a clear or a filter is a few removals, not one per row.
    int last = static_cast<int>(m_rows.size()) - 1;
    while (last >= 0) {
        if (kept.contains(m_rows[std::size_t(last)].id)) {
            --last;
            continue;
        }
        int first = last;
        while (first > 0 && !kept.contains(m_rows[std::size_t(first - 1)].id))
            --first;
        beginRemoveRows({}, first, last);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
        endRemoveRows();
        last = first - 1;
    }
}

void IncidentListModel::setRows(std::vector<IncidentListRow> next)
{
    // Ids are unique by construction; should two rows ever share one, the
    // first stands, so the walk below always finds what it looks for.
    QSet<QUuid> seen;
    seen.reserve(qsizetype(next.size()));
    next.erase(std::remove_if(next.begin(), next.end(),
                              [&](const IncidentListRow &row) {
                                  if (seen.contains(row.id))
                                      return true;
                                  seen.insert(row.id);
                                  return false;
                              }),
               next.end());
    removeMissing(seen);
    QSet<QUuid> present;
    present.reserve(qsizetype(m_rows.size()));
    for (const IncidentListRow &row : m_rows)
        present.insert(row.id);

    // Every id left in m_rows is in `next`; walk `next` and make row i match.
    for (std::size_t i = 0; i < next.size(); ++i) {
        const int at = static_cast<int>(i);
        if (i < m_rows.size() && m_rows[i].id == next[i].id) {
            if (!(m_rows[i] == next[i])) {
                m_rows[i] = next[i];
                announceChanged(at);
            }
            continue;
        }
        if (!present.contains(next[i].id)) {
            // New incidents arrive at the top; take a run of them at once.
            std::size_t end = i + 1;
            while (end < next.size() && !present.contains(next[end].id))
                ++end;
            beginInsertRows({}, at, static_cast<int>(end) - 1);
            m_rows.insert(m_rows.begin() + at, next.begin() + at, next.begin() + end);
            endInsertRows();
            i = end - 1;
            continue;
        }
        // Present further down: the order changed. The store keeps incidents
        // newest first, so this is rare; it stays correct all the same.
        std::size_t from = i + 1;
        while (m_rows[from].id != next[i].id)
            ++from;
        beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, at);
        IncidentListRow moved = std::move(m_rows[from]);
        m_rows.erase(m_rows.begin() + from);
        m_rows.insert(m_rows.begin() + at, std::move(moved));
        endMoveRows();
        if (!(m_rows[i] == next[i])) {
            m_rows[i] = next[i];
            announceChanged(at);
        }
    }
}

void IncidentListModel::setSelectedID(const std::optional<QUuid> &id)
{
    if (id == m_selectedID)
        return;
    const std::optional<QUuid> previous = m_selectedID;
    m_selectedID = id;
    for (const std::optional<QUuid> &touched : {previous, id}) {
        if (!touched)
            continue;
        if (const std::optional<int> row = rowOf(*touched))
            announceChanged(*row);
    }
}
