#include "process/ProtectedProcessNames.h"

#include <QSet>

namespace {

QSet<QString> buildTerminationProtectedNames()
{
    QSet<QString> names = {
        QStringLiteral("kernel_task"),    QStringLiteral("launchd"),
        QStringLiteral("loginwindow"),    QStringLiteral("securityagent"),
        QStringLiteral("systemuiserver"), QStringLiteral("windowserver"),
    };
    for (std::string_view name : kLinuxProtectedProcessNames)
        names.insert(QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())));
    return names;
}

} // namespace

bool isTerminationProtectedName(const QString &name)
{
    // A function-local static is initialised once, and thread-safely.
    static const QSet<QString> names = buildTerminationProtectedNames();
    return names.contains(name.toLower());
}
