#pragma once

#include "presentation/shell/DashboardPage.h"

class ClearHistoryDialog;
class DashboardStore;
class PressableBox;
class QBoxLayout;
class QScrollArea;
class QWidget;
class SettingsSwitch;

// What the program does and the few things the user can change. Nothing here
// is a stored preference: the live controls act on the running store (the
// monitoring switch, clearing the incident log, restoring monitoring), every
// other row states a fixed fact of this version. No file is read or written.
class SettingsPage final : public DashboardPage {
    Q_OBJECT

public:
    SettingsPage(DashboardStore &store, QWidget *parent = nullptr);

    void applyLayout(const DashboardLayoutMetrics &layout) override;

    SettingsSwitch *monitoringSwitch() const { return m_monitoringSwitch; }
    PressableBox *clearHistoryButton() const { return m_clearButton; }
    PressableBox *restoreDefaultsButton() const { return m_restoreButton; }
    // Open while the user is asked to confirm the clear; null before the
    // first ask.
    ClearHistoryDialog *clearHistoryDialog() const { return m_clearDialog; }
    bool isConfirmingClear() const;

private:
    void confirmClear();

    DashboardStore &m_store;
    SettingsSwitch *m_monitoringSwitch;
    PressableBox *m_clearButton;
    PressableBox *m_restoreButton;
    ClearHistoryDialog *m_clearDialog = nullptr;
    QWidget *m_stack;
    QBoxLayout *m_centring;
};
