#pragma once

#include "presentation/kit/ConfirmationDialog.h"

class DashboardStore;

// The question before a process is ended, over whichever page shows. It is
// open exactly while the store has a pending termination: the store's
// workflow opens it, "取消" and every other way of dismissing it clear the
// request, and the destructive button confirms it. No page asks on its own.
class TerminationConfirmationDialog final : public ConfirmationDialog {
    Q_OBJECT

public:
    TerminationConfirmationDialog(DashboardStore &store, QWidget *parent);

private:
    void followStore();
    void refreshTexts();

    DashboardStore &m_store;
    // Set while the dialog closes because the store no longer asks, so that
    // closing does not count as the user's cancel.
    bool m_closingForStore = false;
};
