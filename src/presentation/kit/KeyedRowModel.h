#pragma once

#include <QAbstractListModel>
#include <QCoreApplication>
#include <QHash>
#include <QString>

#include <algorithm>
#include <vector>

// What the rows of a list tell assistive technology and tests. Rows are not
// widgets, so their identifier, label, value and hint travel as model roles:
//
// - Qt::AccessibleTextRole: the row's accessibility label;
// - Qt::AccessibleDescriptionRole: its hint (tree rows);
// - identifier: "taskRow-<task id>", "processTree-node-<pid>",
//   "incidentRow-<incident id>";
// - accessibleValue: "已选择" on the selected row, "未选择" on the others;
// - key: the row's key (a task id, a process node id, an incident id);
// - selected: whether the row is the selected one (a bool, for the selected
//   state a screen reader reports);
// - toggleIdentifier, toggleLabel, toggleEnabled: the tree row's chevron,
//   "processTree-toggle-<pid>", "展开子进程"/"折叠子进程", and whether it
//   reacts (false, and the chevron invisible, for a node without children);
// - expanded: whether the tree row shows its children.
namespace RowRole {
enum : int {
    identifier = Qt::UserRole + 1,
    accessibleValue,
    key,
    toggleIdentifier,
    toggleLabel,
    toggleEnabled,
    selected,
    expanded,
};
} // namespace RowRole

// The one list model of the dashboard: a flat list whose rows are plain
// values identified by a `key`. `setRows` brings the model to a new list
// through removals, moves, inserts and changes, never a reset, so the view's
// current row, scroll position and anything keyed by row identity hold across
// ticks. Runs of adjacent rows go in, go out and change at once, so a clear or
// a filter is a few signals, not one per row. Duplicate keys (a pid listed
// twice in one tick) are handled: they pair up in order.
//
// Row needs a `key` that QHash takes (a text, an id), `operator==`, and for
// the roles every list answers alike an `accessibleLabel`, an `isSelected`
// and an `identifier()`; a list answers its own roles in `rowData`.
template <typename Row> class KeyedRowModel : public QAbstractListModel {
public:
    using Key = decltype(Row::key);
    using QAbstractListModel::QAbstractListModel;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid() || index.row() >= rowCount())
            return {};
        const Row &row = rowAt(index.row());
        switch (role) {
        case Qt::AccessibleTextRole:
            return row.accessibleLabel;
        case RowRole::identifier:
            return row.identifier();
        case RowRole::accessibleValue:
            return row.isSelected ? QCoreApplication::translate("KeyedRowModel", "已选择")
                                  : QCoreApplication::translate("KeyedRowModel", "未选择");
        case RowRole::selected:
            return row.isSelected;
        case RowRole::key:
            return QVariant::fromValue(row.key);
        default:
            return rowData(row, role);
        }
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    const std::vector<Row> &rows() const { return m_rows; }
    const Row &rowAt(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    // The row index of `key`, or -1.
    int rowOf(const Key &key) const
    {
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            if (m_rows[i].key == key)
                return static_cast<int>(i);
        }
        return -1;
    }

    void setRows(std::vector<Row> next)
    {
        std::vector<int> changed;
        if (hasSameKeysInOrder(next)) {
            // Most ticks only change figures: no row comes, goes or moves, so
            // the key tables below would be built for nothing.
            for (std::size_t i = 0; i < next.size(); ++i) {
                if (!(m_rows[i] == next[i])) {
                    m_rows[i] = std::move(next[i]);
                    changed.push_back(static_cast<int>(i));
                }
            }
            emitChangedRuns(changed);
            return;
        }
        removeRowsMissingFrom(next);
        QHash<Key, int> remaining; // rows at index >= i still to be placed, by key
        for (const Row &row : m_rows)
            ++remaining[row.key];
        for (std::size_t i = 0; i < next.size(); ++i) {
            const int at = static_cast<int>(i);
            if (i < m_rows.size() && m_rows[i].key == next[i].key) {
                --remaining[next[i].key];
            } else if (remaining.value(next[i].key) > 0) {
                moveRowToward(next[i].key, at);
                --remaining[next[i].key];
            } else {
                // A run of new keys goes in at once.
                std::size_t end = i + 1;
                while (end < next.size() && remaining.value(next[end].key) == 0)
                    ++end;
                beginInsertRows({}, at, static_cast<int>(end) - 1);
                m_rows.insert(m_rows.begin() + at, next.begin() + at, next.begin() + end);
                endInsertRows();
                i = end - 1;
                continue;
            }
            if (!(m_rows[i] == next[i])) {
                m_rows[i] = std::move(next[i]);
                changed.push_back(at);
            }
        }
        if (m_rows.size() > next.size()) {
            beginRemoveRows({}, static_cast<int>(next.size()), static_cast<int>(m_rows.size()) - 1);
            m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(next.size()), m_rows.end());
            endRemoveRows();
        }
        emitChangedRuns(changed);
    }

protected:
    virtual QVariant rowData(const Row &, int) const { return {}; }

private:
    bool hasSameKeysInOrder(const std::vector<Row> &next) const
    {
        return std::equal(m_rows.begin(), m_rows.end(), next.begin(), next.end(),
                          [](const Row &a, const Row &b) { return a.key == b.key; });
    }

    void removeRowsMissingFrom(const std::vector<Row> &next)
    {
        QHash<Key, int> wanted;
        for (const Row &row : next)
            ++wanted[row.key];
        // From the end, so the indexes before a removed run stay valid; runs
        // of adjacent rows go at once.
        int index = static_cast<int>(m_rows.size()) - 1;
        while (index >= 0) {
            if (wanted.value(m_rows[static_cast<std::size_t>(index)].key) > 0) {
                --index;
                continue;
            }
            int first = index;
            while (first > 0 && wanted.value(m_rows[static_cast<std::size_t>(first - 1)].key) == 0)
                --first;
            beginRemoveRows({}, first, index);
            m_rows.erase(m_rows.begin() + first, m_rows.begin() + index + 1);
            endRemoveRows();
            index = first - 1;
        }
    }

    void moveRowToward(const Key &key, int destination)
    {
        int source = destination + 1;
        while (m_rows[static_cast<std::size_t>(source)].key != key)
            ++source;
        beginMoveRows({}, source, source, {}, destination);
        Row row = std::move(m_rows[static_cast<std::size_t>(source)]);
        m_rows.erase(m_rows.begin() + source);
        m_rows.insert(m_rows.begin() + destination, std::move(row));
        endMoveRows();
    }

    void emitChangedRuns(const std::vector<int> &changed)
    {
        std::size_t i = 0;
        while (i < changed.size()) {
            std::size_t end = i + 1;
            while (end < changed.size() && changed[end] == changed[end - 1] + 1)
                ++end;
            emit dataChanged(index(changed[i]), index(changed[end - 1]));
            i = end;
        }
    }

    std::vector<Row> m_rows;
};
