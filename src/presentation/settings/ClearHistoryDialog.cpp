#include "presentation/settings/ClearHistoryDialog.h"

ClearHistoryDialog::ClearHistoryDialog(QWidget *parent)
    : ConfirmationDialog(QStringLiteral("clearHistoryConfirmation"),
                         QStringLiteral("cancelClearHistoryButton"),
                         QStringLiteral("confirmClearHistoryButton"), parent)
{
    setMinimumWidth(400);
    setQuestion(tr("清除本次会话的事件历史？"), tr("此操作不会影响系统数据或正在运行的进程。"),
                tr("清除"));
}
