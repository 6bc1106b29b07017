#include "presentation/settings/ClearHistoryDialog.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ClearHistoryDialog)
};

} // namespace

ClearHistoryDialog::ClearHistoryDialog(QWidget *parent)
    : ConfirmationDialog(QStringLiteral("clearHistoryConfirmation"),
                         QStringLiteral("cancelClearHistoryButton"),
                         QStringLiteral("confirmClearHistoryButton"), parent)
{
    setMinimumWidth(400);
    setQuestion(Words::tr("清除本次会话的事件历史？"),
                Words::tr("此操作不会影响系统数据或正在运行的进程。"), Words::tr("清除"));
}
