#pragma once

#include <QDialog>

class DashboardDialogButton;
class QPushButton;
class TextLabel;

// The question before a destructive action: a title, a message, "取消" and
// the destructive button. A dialog is built once and reused, so every time it
// opens it hands the keyboard back to "取消": focus and default both sit on
// it, and Return, Enter and Space answer no. The destructive button answers
// only to a click or to an explicit Tab onto it. A button the user clicked
// the last time keeps no focus into the next question.
class ConfirmationDialog : public QDialog {
    Q_OBJECT

public:
    // The identifiers name the dialog and its two buttons.
    ConfirmationDialog(const QString &identifier, const QString &cancelIdentifier,
                       const QString &confirmIdentifier, QWidget *parent);

    QPushButton *cancelButton() const;
    QPushButton *confirmButton() const;

protected:
    // Sets what the dialog asks; the title is also the window title and the
    // accessible name, the message the accessible description.
    void setQuestion(const QString &title, const QString &message, const QString &action);

    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    TextLabel *m_title;
    TextLabel *m_message;
    DashboardDialogButton *m_cancel;
    DashboardDialogButton *m_confirm;
};
