#pragma once

#include "presentation/kit/DashboardLayoutEnvironment.h"
#include "presentation/shell/DashboardSection.h"

#include <QWidget>

#include <map>

class PressableBox;
class QBoxLayout;
class QVBoxLayout;
class SymbolView;
class TextLabel;

// The section list on the window's left: the brand block, the four sections
// of the workspace, and settings at the bottom.
class DashboardSidebar final : public QWidget, public DashboardLayoutAware {
    Q_OBJECT

public:
    explicit DashboardSidebar(QWidget *parent = nullptr);

    void setSelectedSection(DashboardSection section);
    DashboardSection selectedSection() const { return m_selected; }
    void applyLayout(const DashboardLayoutMetrics &layout) override;

    // The brand block, where the tray's panel opens when the desktop has no tray.
    QWidget *brandBlock() const;
    // Without a tray the brand block is a button to the panel: it takes focus
    // (Tab, then Return or Space), shows the hand cursor and says what it does.
    void setBrandOpensPanel(bool opensPanel);

signals:
    void sectionRequested(DashboardSection section);
    void brandActivated();

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Row {
        PressableBox *box = nullptr;
        SymbolView *symbol = nullptr;
        TextLabel *title = nullptr;
        QBoxLayout *layout = nullptr;
    };
    Row makeRow(DashboardSection section);
    void refreshRows();

    DashboardSection m_selected = DashboardSection::overview;
    std::map<DashboardSection, Row> m_rows;
    PressableBox *m_brand = nullptr;
    TextLabel *m_brandTitle = nullptr;
    QBoxLayout *m_brandLayout = nullptr;
    TextLabel *m_caption = nullptr;
    QVBoxLayout *m_listLayout = nullptr;
    QVBoxLayout *m_settingsLayout = nullptr;
    bool m_showsLabels = true;
};
