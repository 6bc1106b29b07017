#pragma once

#include "dashboard/DashboardModel.h"
#include "presentation/diagnosis/PaintedTextCache.h"
#include "presentation/kit/DashboardLayoutMetrics.h"
#include "presentation/kit/KeyedRowModel.h"

#include <QListView>
#include <QStyledItemDelegate>

#include <vector>

class RowMotion;

// The source list of the live diagnosis page: a model over the visible
// sources, a delegate that paints a row, and the view that turns a press
// into a selection request. Hundreds of sources cost one painted row each.

// One row, already formatted. Identified by the task id.
struct SourceListRow {
    QString key; // task id
    QString application;
    QString subtitle;  // "主要进程 %1 · PID %2"
    QString targetCPU; // "42%"
    QString totalCPU;
    bool isSelected = false;
    QString accessibleLabel;

    bool operator==(const SourceListRow &) const = default;

    static SourceListRow of(const DashboardTask &task, bool isSelected);
    QString identifier() const { return QStringLiteral("taskRow-") + key; }
};

// Rows and their accessibility roles (RowRole); the label is the tooltip too.
class SourceListModel final : public KeyedRowModel<SourceListRow> {
public:
    using KeyedRowModel::KeyedRowModel;

protected:
    QVariant rowData(const SourceListRow &row, int role) const override;
};

class SourceListDelegate final : public QStyledItemDelegate {
public:
    SourceListDelegate(RowMotion *motion, QObject *parent);

    void setLayoutMetrics(const DashboardLayoutMetrics &layout);
    // Row height plus the gap to the next row.
    int rowPitch() const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    RowMotion *m_motion;
    DashboardLayoutMetrics m_layout;
    mutable PaintedTextCache m_texts;
};

class SourceListView final : public QListView {
    Q_OBJECT

public:
    explicit SourceListView(QWidget *parent = nullptr);

    SourceListModel *sourceModel() const { return m_model; }
    SourceListDelegate *sourceDelegate() const { return m_delegate; }
    RowMotion *motion() const { return m_motion; }

    // Brings the rows to `rows`, animating the ones that change place.
    void setRows(std::vector<SourceListRow> rows);
    void setLayoutMetrics(const DashboardLayoutMetrics &layout);
    // The visual rectangle of the row of `key` (for tests and tools).
    QRect rowRect(const QString &key) const;

signals:
    void taskPressed(const QString &taskID);

private:
    SourceListModel *m_model;
    RowMotion *m_motion;
    SourceListDelegate *m_delegate;
};
