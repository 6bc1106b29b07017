#pragma once

#include "presentation/kit/DashboardLayoutEnvironment.h"

#include <QUuid>
#include <QWidget>

#include <array>

class IncidentListModel;
class IncidentRowDelegate;
class IncidentRowMotion;
class QListView;
class QStackedWidget;
class TextLabel;

// The left (or, in the compact class, upper) panel of the event history: the
// heading, the column captions, and the incidents as a list view over
// IncidentListModel, or the empty state when nothing is listed.
class IncidentListPanel final : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    explicit IncidentListPanel(IncidentListModel &model, QWidget *parent = nullptr);

    void applyLayout(const DashboardLayoutMetrics &layout) override;
    QListView *listView() const { return m_view; }
    bool showsEmptyState() const;
    // The selection's ease from row `from` to row `to`; only on the user's
    // action, so the list is still while nothing changes.
    void animateSelection(const QUuid &from, const QUuid &to);
    bool isAnimating() const;

signals:
    // A press on a row; the page decides what it means.
    void incidentClicked(const QUuid &id);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showListOrEmptyState();
    void placeCaptions();

    IncidentListModel &m_model;
    IncidentRowDelegate *m_delegate;
    IncidentRowMotion *m_motion;
    std::array<TextLabel *, 5> m_captions{};
    QListView *m_view;
    QWidget *m_emptyState;
    QStackedWidget *m_stack = nullptr;
};
