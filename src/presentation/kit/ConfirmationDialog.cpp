#include "presentation/kit/ConfirmationDialog.h"

#include "presentation/kit/DashboardButtons.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"

#include <QPainter>

ConfirmationDialog::ConfirmationDialog(const QString &identifier, const QString &cancelIdentifier,
                                       const QString &confirmIdentifier, QWidget *parent)
    : QDialog(parent)
{
    using namespace DashboardPalette;
    setObjectName(identifier);
    setWindowModality(Qt::WindowModal);
    setModal(true);
    setMinimumWidth(420);
    setMaximumWidth(520);

    m_title = new TextLabel(QString(), 15, DashboardFontWeight::semibold, textPrimary);
    m_title->setWordWrap(true);
    m_message = new TextLabel(QString(), 13, DashboardFontWeight::regular, textSecondary);
    m_message->setWordWrap(true);
    m_cancel = new DashboardDialogButton(tr("取消"), DashboardDialogButton::Tone::neutral);
    m_cancel->setObjectName(cancelIdentifier);
    m_confirm = new DashboardDialogButton(QString(), DashboardDialogButton::Tone::destructive);
    m_confirm->setObjectName(confirmIdentifier);
    m_confirm->setAutoDefault(false);

    attach(this,
           column(12, {24, 22, 24, 20},
                  {m_title, m_message, fixed(8), row(10, {}, {flexible(), m_cancel, m_confirm})}));

    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_confirm, &QPushButton::clicked, this, &QDialog::accept);
}

QPushButton *ConfirmationDialog::cancelButton() const
{
    return m_cancel;
}

QPushButton *ConfirmationDialog::confirmButton() const
{
    return m_confirm;
}

void ConfirmationDialog::setQuestion(const QString &title, const QString &message,
                                     const QString &action)
{
    m_title->setText(title);
    m_message->setText(message);
    m_confirm->setText(action);
    setWindowTitle(title);
    setAccessibleName(title);
    setAccessibleDescription(message);
}

void ConfirmationDialog::showEvent(QShowEvent *event)
{
    // QDialog keeps the focus where the last answer left it; the safe answer
    // takes it back before the dialog looks for a default.
    m_confirm->setDefault(false);
    m_cancel->setDefault(true);
    m_cancel->setFocus(Qt::OtherFocusReason);
    QDialog::showEvent(event);
}

void ConfirmationDialog::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(DashboardPalette::pageBackground));
}
