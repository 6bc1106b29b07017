#pragma once

#include "presentation/diagnosis/PaintedTextCache.h"
#include "presentation/diagnosis/ProcessTreeRows.h"
#include "presentation/kit/DashboardLayoutMetrics.h"
#include "presentation/kit/KeyedRowModel.h"

#include <QListView>
#include <QStyledItemDelegate>

#include <vector>

// The process composition tree as a flat list: the model holds the visible
// rows of the flattened tree (ProcessTreeRows.h), the delegate paints a row
// with its indent, chevron, two lines and four cells, and the view tells a
// press on the chevron from a press on the rest of the row.

// One visible row, formatted. Identified by the node id.
struct ProcessTreeRow {
    QString key; // node id
    QString name;
    pid_t pid = 0;
    int depth = 0;
    bool hasChildren = false;
    bool isExpanded = false;
    bool isTarget = false;
    QString badge;  // empty: none
    QString detail; // the second line
    QString roleLabel;
    QString cpu; // "42%"
    QString memory;
    QString disk;
    ResourceImpact impact = ResourceImpact::low;
    bool isSelected = false;
    QString accessibleLabel;

    bool operator==(const ProcessTreeRow &) const = default;

    static ProcessTreeRow of(const VisibleProcessRow &row, bool isExpanded, bool isSelected);
    QString identifier() const { return QStringLiteral("processTree-node-%1").arg(pid); }
};

// Rows and their accessibility roles (RowRole); the label is the tooltip too.
class ProcessTreeModel final : public KeyedRowModel<ProcessTreeRow> {
public:
    using KeyedRowModel::KeyedRowModel;

protected:
    QVariant rowData(const ProcessTreeRow &row, int role) const override;
};

// The fixed columns at the trailing edge, shared by the rows and the header.
struct ProcessTreeColumns {
    static constexpr int pid = 54;
    static constexpr int cpu = 54;
    static constexpr int memory = 78;
    static constexpr int impact = 62;
    static constexpr int trailing = pid + cpu + memory + impact;
    static constexpr int indentStep = 16;
    static constexpr int toggleWidth = 14;
    static constexpr int rowHeight = 40;
    static constexpr int rowGap = 3;
};

class ProcessTreeDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setLayoutMetrics(const DashboardLayoutMetrics &layout) { m_layout = layout; }

    // The chevron's box in a row of `rowRect`.
    static QRect toggleRect(const QRect &rowRect, int depth);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    DashboardLayoutMetrics m_layout;
    mutable PaintedTextCache m_texts;
};

class ProcessTreeView final : public QListView {
    Q_OBJECT

public:
    explicit ProcessTreeView(QWidget *parent = nullptr);

    ProcessTreeModel *treeModel() const { return m_model; }
    void setLayoutMetrics(const DashboardLayoutMetrics &layout);
    // The row of a process, by pid (the first one), for tests and tools.
    QRect rowRect(pid_t pid) const;
    QRect toggleRect(pid_t pid) const;

signals:
    void toggleRequested(pid_t pid);
    void processPressed(const QString &nodeID);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    int rowOfPID(pid_t pid) const;

    ProcessTreeModel *m_model;
    ProcessTreeDelegate *m_delegate;
    QPersistentModelIndex m_pressed;
    bool m_pressedOnToggle = false;
};
