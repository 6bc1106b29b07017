#pragma once

#include "dashboard/MenuBarPresentation.h"

#include <QWidget>

#include <array>

class HairLine;
class MenuBarPanelButton;
class MenuBarPanelLabel;
class RoundedBox;
class SymbolView;

// What the panel shows between the metrics and the buttons.
enum class MenuBarPanelDetail { none, primaryTask, message };
// The primary task box names the load in the abnormal states; the message row
// speaks for the calm ones. An abnormal state without a task shows neither,
// whatever message it carries.
MenuBarPanelDetail menuBarPanelDetail(const MenuBarPresentation &presentation);
// The task box's second text ("另有 2 个需关注任务"); empty below 1.
QString menuBarRemainingTaskText(qint64 remainingAttentionTaskCount);

// The small window under the tray item: the state, three metrics, the task to
// look at or a calming line, and the way to the dashboard. Exactly 330 wide.
// It only shows a presentation value and an appearance; it reads no store.
class KilnWardenMenuBarPanel final : public QWidget {
    Q_OBJECT

public:
    static constexpr int panelWidth = 330;

    explicit KilnWardenMenuBarPanel(QWidget *parent = nullptr);

    void setPresentation(const MenuBarPresentation &presentation);
    const MenuBarPresentation &presentation() const { return m_presentation; }
    void setDarkAppearance(bool dark);
    bool isDarkAppearance() const { return m_dark; }

signals:
    // "打开仪表盘", the panel's default action (Return or Enter).
    void openDashboardRequested();
    // "退出".
    void quitRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Metric {
        QWidget *box = nullptr;
        MenuBarPanelLabel *title = nullptr;
        MenuBarPanelLabel *value = nullptr;
    };
    Metric makeMetric(const QString &identifier);
    QWidget *makeDivider(HairLine **line);
    void refresh();

    MenuBarPresentation m_presentation;
    bool m_dark = false;

    QWidget *m_status;
    SymbolView *m_statusSymbol;
    MenuBarPanelLabel *m_headline;
    MenuBarPanelLabel *m_duration;
    std::array<Metric, 3> m_metrics;
    RoundedBox *m_taskBox;
    MenuBarPanelLabel *m_taskCaption;
    MenuBarPanelLabel *m_taskApplication;
    MenuBarPanelLabel *m_taskCPU;
    MenuBarPanelLabel *m_taskRunning;
    MenuBarPanelLabel *m_taskSeparator;
    MenuBarPanelLabel *m_taskRemaining;
    RoundedBox *m_message;
    SymbolView *m_messageSymbol;
    MenuBarPanelLabel *m_messageText;
    std::array<HairLine *, 3> m_dividerLines{};
    QWidget *m_detailDivider;
    MenuBarPanelButton *m_openDashboard;
    MenuBarPanelButton *m_quit;
};
