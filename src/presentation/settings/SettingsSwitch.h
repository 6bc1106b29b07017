#pragma once

#include <QAbstractButton>

// A small switch in the accent tint. It shows a state that lives elsewhere:
// a press does not flip it but asks (`toggleRequested`), and whoever owns the
// state answers with setChecked. So a switch bound to the store follows the
// store from any side, and a switch bound to a constant stays as it is.
//
// Accessibility: a checkable button whose value is "已开启" or "已关闭";
// its label is the row's title (the switch draws none).
class SettingsSwitch final : public QAbstractButton {
    Q_OBJECT

public:
    explicit SettingsSwitch(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void toggleRequested(bool on);

protected:
    void nextCheckState() override;
    void paintEvent(QPaintEvent *event) override;

private:
    void updateAccessibleValue();
};
