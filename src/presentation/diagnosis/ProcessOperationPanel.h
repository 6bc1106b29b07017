#pragma once

#include "dashboard/DashboardModel.h"

#include <QPushButton>
#include <QWidget>

#include <functional>

class DashboardStore;
class PillLabel;
class RoundedBox;
class TextLabel;

// A small button of the operation panel: bordered (light fill, hairline) or
// prominent (filled with a tint, white text). It is one of the program's own
// classes, so it reports an accessibility value ("可结束", ...).
class PanelButton final : public QPushButton {
    Q_OBJECT

public:
    enum class Style { bordered, prominent };
    PanelButton(const QString &text, Style style, QRgb tint, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Style m_style;
    QRgb m_tint;
};

// What the selected process is, what ending it means, the end action, and
// the verification of recovery after an exit. It shows the store's
// termination workflow and adds no state: the end button only asks the store
// (`requestTermination`); the frame's dialog confirms.
class ProcessOperationPanel final : public QWidget {
    Q_OBJECT

public:
    ProcessOperationPanel(DashboardStore &store, std::function<void()> openTerminal,
                          QWidget *parent = nullptr);

    // `task` and `process` are the store's selected task and process (null
    // for none), looked up once per change by the workspace.
    void refresh(const DashboardTask *task, const DashboardProcessNode *process);

    PanelButton *endButton() const { return m_end; }
    PanelButton *terminalButton() const { return m_terminal; }

private:
    void requestEnd();

    DashboardStore &m_store;
    std::function<void()> m_openTerminal;
    TextLabel *m_impactLabel;
    RoundedBox *m_summary;
    TextLabel *m_processName;
    PillLabel *m_role;
    TextLabel *m_processFacts;
    TextLabel *m_recommendation;
    TextLabel *m_impactText;
    PanelButton *m_terminal;
    PanelButton *m_end;
    TextLabel *m_target;
    TextLabel *m_status;
    QWidget *m_comparison;
    TextLabel *m_cpuValues;
    TextLabel *m_temperatureValues;
    TextLabel *m_message;
};
