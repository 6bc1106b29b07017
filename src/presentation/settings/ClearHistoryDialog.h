#pragma once

#include <QDialog>

class QPushButton;

// The question before the session's incidents are cleared. "清除" accepts and
// "取消" (the default, also Escape) rejects; the settings page acts on the
// answer. Nothing on disk is involved: the log lives in the store alone.
class ClearHistoryDialog final : public QDialog {
    Q_OBJECT

public:
    explicit ClearHistoryDialog(QWidget *parent);

    QPushButton *cancelButton() const { return m_cancel; }
    QPushButton *clearButton() const { return m_clear; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPushButton *m_cancel;
    QPushButton *m_clear;
};
