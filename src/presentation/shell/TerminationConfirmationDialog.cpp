#include "presentation/shell/TerminationConfirmationDialog.h"

#include "dashboard/DashboardStore.h"
#include "dashboard/DashboardTexts.h"

TerminationConfirmationDialog::TerminationConfirmationDialog(DashboardStore &store, QWidget *parent)
    : ConfirmationDialog(QStringLiteral("terminationConfirmation"),
                         QStringLiteral("cancelTerminationButton"),
                         QStringLiteral("confirmTerminationButton"), parent),
      m_store(store)
{
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
        setQuestion(tr("结束选中进程？"), tr("系统会先重新核对进程身份，再发送一次正常结束请求。"),
                    tr("结束进程"));
    } else {
        setQuestion(terminationConfirmationTitle(*pending),
                    terminationConfirmationMessage(*pending),
                    terminationConfirmationActionTitle(*pending));
    }
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
