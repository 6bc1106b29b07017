#include "platform/linux/ProcessName.h"

namespace {

QString lastComponent(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash < 0 ? path : path.sliced(slash + 1);
}

} // namespace

QString executablePathShown(const QString &executablePath)
{
    // A replaced binary's link ends in " (deleted)": that belongs to the
    // identity (a replaced binary is another executable), not to what is shown.
    static const QLatin1String deleted(" (deleted)");
    return executablePath.endsWith(deleted) ? executablePath.chopped(deleted.size())
                                            : executablePath;
}

QString processDisplayName(const QString &comm, const QString &executablePath)
{
    const QString executableName = lastComponent(executablePathShown(executablePath));
    if (comm.isEmpty())
        return executableName;
    // The kernel keeps only the first 15 bytes of a name (TASK_COMM_LEN − 1):
    // "kilnwarden-report" arrives as "kilnwarden-repo". When the executable's
    // own name continues the cut name, show the whole one.
    constexpr qsizetype kernelNameLimit = 15;
    if (comm.toUtf8().size() == kernelNameLimit && executableName.size() > comm.size() &&
        executableName.startsWith(comm))
        return executableName;
    return comm;
}
