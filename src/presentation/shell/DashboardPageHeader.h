#pragma once

#include "presentation/kit/DashboardLayoutEnvironment.h"
#include "presentation/shell/DashboardSection.h"

#include <QWidget>

class DashboardStore;
class Dot;
class PressableBox;
class QBoxLayout;
class TextLabel;

// The monitoring switch of the header: "监控中" on green while the store
// samples, "已暂停" on grey while it does not. A press stops or starts.
class MonitoringButton final : public QWidget {
    Q_OBJECT

public:
    explicit MonitoringButton(DashboardStore &store, QWidget *parent = nullptr);

private:
    void refresh();

    DashboardStore &m_store;
    PressableBox *m_box;
    Dot *m_dot;
    TextLabel *m_text;
};

// The top of the right column: the section's title, the privacy label, the
// monitoring switch, and a status line that depends on the section.
class DashboardPageHeader final : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    DashboardPageHeader(DashboardStore &store, DashboardSection section, QWidget *parent = nullptr);

    void setSection(DashboardSection section);
    void applyLayout(const DashboardLayoutMetrics &layout) override;
    QString statusLineText() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void refreshStatusLine();

    DashboardStore &m_store;
    DashboardSection m_section;
    TextLabel *m_title;
    QWidget *m_privacy;
    TextLabel *m_statusLine;
    QBoxLayout *m_layout;
};
