#pragma once

#include "presentation/kit/DashboardLayoutEnvironment.h"
#include "presentation/shell/DashboardSection.h"

#include <QWidget>

#include <functional>

class DashboardStore;

// What the shell hands to a page besides the store.
struct DashboardPageActions {
    std::function<void()> openDiagnosis; // switch to the live diagnosis page
    std::function<void()> openTerminal;  // start the user's terminal
};

// A page of the dashboard. The shell creates one anew on every change of
// section (its view-local state starts fresh) and destroys the old one. A
// page reads the store and repaints from its change signals; it rearranges in
// applyLayout, which the shell calls once the page is in the window and again
// whenever the layout metrics change.
class DashboardPage : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    DashboardPage(DashboardSection section, QWidget *parent = nullptr);

    DashboardSection section() const { return m_section; }
    void applyLayout(const DashboardLayoutMetrics &layout) override;

private:
    DashboardSection m_section;
};

// The one place that knows which widget shows which section.
DashboardPage *createDashboardPage(DashboardSection section, DashboardStore &store,
                                   const DashboardPageActions &actions, QWidget *parent = nullptr);

// The page identifiers: "page-overview", "page-live-diagnosis", ...
