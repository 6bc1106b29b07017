#include "presentation/shell/TerminationConfirmationDialog.h"

#include "dashboard/DashboardStore.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/LayoutBuilder.h"
#include "sampling/Text.h"

#include <QPainter>
#include <QPushButton>

namespace {

QPushButton *makeDialogButton(const QString &identifier, bool destructive)
{
    auto *button = new QPushButton;
    button->setObjectName(identifier);
    button->setMinimumHeight(32);
    button->setMinimumWidth(96);
    button->setFont(fixedDashboardFont(13, DashboardFontWeight::medium));
    button->setCursor(Qt::PointingHandCursor);
    QPalette palette = button->palette();
    if (destructive) {
        palette.setColor(QPalette::Button, QColor::fromRgb(DashboardPalette::danger));
        palette.setColor(QPalette::ButtonText, Qt::white);
    } else {
        palette.setColor(QPalette::Button, QColor::fromRgb(DashboardPalette::controlBackground));
        palette.setColor(QPalette::ButtonText, QColor::fromRgb(DashboardPalette::textPrimary));
    }
    button->setPalette(palette);
    return button;
}

} // namespace

TerminationConfirmationDialog::TerminationConfirmationDialog(DashboardStore &store, QWidget *parent)
    : QDialog(parent), m_store(store)
{
    setObjectName(QStringLiteral("terminationConfirmation"));
    setWindowModality(Qt::WindowModal);
    setModal(true);
    setMinimumWidth(420);
    setMaximumWidth(520);

    m_title =
        new TextLabel(QString(), 15, DashboardFontWeight::semibold, DashboardPalette::textPrimary);
    m_title->setWordWrap(true);
    m_message =
        new TextLabel(QString(), 13, DashboardFontWeight::regular, DashboardPalette::textSecondary);
    m_message->setWordWrap(true);
    m_cancel = makeDialogButton(QStringLiteral("cancelTerminationButton"), false);
    m_confirm = makeDialogButton(QStringLiteral("confirmTerminationButton"), true);
    m_cancel->setText(kwText("取消"));
    // Return does not end a process by accident: the safe choice is the default.
    m_cancel->setDefault(true);
    m_cancel->setAutoDefault(true);
    m_confirm->setAutoDefault(false);

    attach(this,
           column(12, {24, 22, 24, 20},
                  {m_title, m_message, fixed(8), row(10, {}, {flexible(), m_cancel, m_confirm})}));

    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_confirm, &QPushButton::clicked, this, &QDialog::accept);
    connect(this, &QDialog::rejected, this, [this] {
        if (!m_closingForStore)
            m_store.cancelTermination();
    });
    connect(this, &QDialog::accepted, this, [this] {
        if (!m_closingForStore)
            m_store.confirmTermination();
    });
    connect(&m_store, &DashboardStore::pendingTerminationChanged, this,
            &TerminationConfirmationDialog::followStore);
    followStore();
}

void TerminationConfirmationDialog::refreshTexts()
{
    const auto &pending = m_store.pendingTermination();
    if (!pending) {
        m_title->setText(kwText("结束选中进程？"));
        m_message->setText(kwText("系统会先重新核对进程身份，再发送一次正常结束请求。"));
        m_confirm->setText(kwText("结束进程"));
    } else {
        m_title->setText(pending->confirmationTitle());
        m_message->setText(pending->confirmationMessage());
        m_confirm->setText(pending->confirmationActionTitle());
    }
    setWindowTitle(m_title->fullText());
    setAccessibleName(m_title->fullText());
    setAccessibleDescription(m_message->fullText());
}

void TerminationConfirmationDialog::followStore()
{
    const bool pending = m_store.pendingTermination().has_value();
    if (pending) {
        refreshTexts();
        if (!isVisible()) {
            adjustSize();
            open();
        }
        return;
    }
    if (isVisible()) {
        m_closingForStore = true;
        reject();
        m_closingForStore = false;
    }
}

void TerminationConfirmationDialog::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(DashboardPalette::pageBackground));
}
