#pragma once

#include "dashboard/DashboardIncident.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/overview/OverviewDividedRows.h"

#include <array>
#include <vector>

// One incident: the status dot and title, "source · detail", and the time it
// began.
class OverviewEventRow final : public QWidget {
    Q_OBJECT

public:
    explicit OverviewEventRow(QWidget *parent = nullptr);

    void setIncident(const DashboardIncident &incident);

private:
    Dot *m_dot;
    TextLabel *m_title;
    TextLabel *m_detail;
    TextLabel *m_time;
};

// "最近事件": the first three incidents, newest first; with none, the calm
// label.
class OverviewRecentEventList final : public QWidget {
    Q_OBJECT

public:
    static constexpr int kMaximumRows = 3;

    explicit OverviewRecentEventList(QWidget *parent = nullptr);

    void setIncidents(const std::vector<DashboardIncident> &incidents);

    int visibleRowCount() const { return m_body.count(); }
    OverviewEventRow *row(int index) const { return m_rows[std::size_t(index)]; }
    QWidget *emptyLabel() const { return m_body.emptyLabel(); }

private:
    std::array<OverviewEventRow *, kMaximumRows> m_rows{};
    OverviewDividedRows m_body;
};
