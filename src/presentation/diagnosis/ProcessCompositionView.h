#pragma once

#include "dashboard/DashboardModel.h"
#include "presentation/diagnosis/ProcessTreeRows.h"
#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QHash>
#include <QWidget>

#include <optional>

class ProcessTreeView;
class QStackedLayout;
class QHBoxLayout;

// What the selected load source is made of: its processes as an indented,
// collapsible table with a header and a caption, or an empty state without a
// task or processes. It keeps the expansion set; the selection belongs to
// the store, and this view only reports a choice.
class ProcessCompositionView final : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    explicit ProcessCompositionView(QWidget *parent = nullptr);

    // `task` must stay valid until the next call (the workspace calls again
    // on every change of the store); null for none.
    void setContent(const DashboardTask *task, const std::optional<QString> &selectedProcessID);

    ProcessTreeView *treeView() const { return m_tree; }
    const ProcessExpansion &expansion() const { return m_expansion; }
    bool showsEmptyState() const;

    void applyLayout(const DashboardLayoutMetrics &layout) override;

signals:
    void processSelected(const QString &nodeID);

private:
    void toggle(pid_t pid);
    void rebuildRows();
    void followScrollBar();

    // A copy: the store replaces its task list on every tick, so a pointer
    // into it would dangle by the next call.
    std::optional<DashboardTask> m_task;
    // The node each shown row was formatted from (into m_task), by node id;
    // null for an id shown twice.
    QHash<QString, const DashboardProcessNode *> m_formattedFrom;
    std::optional<QString> m_selectedProcessID;
    ProcessExpansion m_expansion;
    ProcessTreeView *m_tree;
    QStackedLayout *m_stack;
    QWidget *m_content;
    QWidget *m_empty;
    QHBoxLayout *m_header;
};
