#pragma once

#include "dashboard/DashboardModel.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/overview/OverviewDividedRows.h"

#include <array>
#include <functional>
#include <vector>

class PillLabel;
class TextLabel;

// One load source in the attention list: name and target process, its CPU
// and impact badge. The whole row is a button.
class OverviewAttentionRow final : public PressableBox {
    Q_OBJECT

public:
    explicit OverviewAttentionRow(QWidget *parent = nullptr);

    void setTask(const DashboardTask &task, bool selected);
    const QString &taskID() const { return m_taskID; }

private:
    QString m_taskID;
    TextLabel *m_application;
    TextLabel *m_process;
    TextLabel *m_cpu;
    PillLabel *m_badge;
};

// "需要关注": at most three sources, each a row that calls `onSelect` with the
// task's id; with none, the calm label.
class OverviewAttentionList final : public QWidget {
    Q_OBJECT

public:
    static constexpr int kMaximumRows = 3;

    explicit OverviewAttentionList(QWidget *parent = nullptr);

    // Shows the first three of `tasks`.
    void setTasks(const std::vector<DashboardTask> &tasks, const QString &selectedTaskID);
    void setOnSelect(std::function<void(const QString &taskID)> onSelect);

    int visibleRowCount() const { return m_body.count(); }
    OverviewAttentionRow *row(int index) const { return m_rows[std::size_t(index)]; }
    QWidget *emptyLabel() const { return m_body.emptyLabel(); }

private:
    std::array<OverviewAttentionRow *, kMaximumRows> m_rows{};
    OverviewDividedRows m_body;
    std::function<void(const QString &)> m_onSelect;
};
