#include "platform/linux/ServiceManagerRecognition.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcPidStat.h"

#include <climits>
#include <cstdlib>
#include <memory>

namespace {

const QLatin1StringView kDeletedMark(" (deleted)");

QString withoutDeletedMark(QString path)
{
    if (path.endsWith(kDeletedMark))
        path.chop(kDeletedMark.size());
    return path;
}

std::optional<QString> resolvedPath(const QByteArray &path)
{
    if (!path.startsWith('/'))
        return std::nullopt;
    struct FreeDeleter {
        void operator()(char *pointer) const { std::free(pointer); }
    };
    const std::unique_ptr<char, FreeDeleter> resolved(::realpath(path.constData(), nullptr));
    if (!resolved)
        return std::nullopt;
    return QString::fromUtf8(resolved.get());
}

} // namespace

bool ServiceManagerIdentity::matches(pid_t pid, const QString &processExecutable,
                                     const QString &processName) const
{
    if (pid == 1)
        return true;
    if (executablePath)
        return withoutDeletedMark(processExecutable) == *executablePath;
    return !name.isEmpty() && processName == name;
}

std::optional<QByteArray> firstArgument(std::string_view procPidCmdline)
{
    const std::string_view first = procPidCmdline.substr(0, procPidCmdline.find('\0'));
    if (first.empty())
        return std::nullopt;
    return QByteArray(first.data(), qsizetype(first.size()));
}

ServiceManagerIdentity readServiceManagerIdentity(const QByteArray &procRoot)
{
    ServiceManagerIdentity identity;
    const QByteArray pidDirectory = procRoot + "/1";
    if (const auto exe = readLinkTarget(pidDirectory + "/exe")) {
        identity.executablePath = withoutDeletedMark(QString::fromUtf8(*exe));
        return identity;
    }
    const FileReadResult cmdline = readKernelFile(pidDirectory + "/cmdline");
    if (cmdline.bytes) {
        if (const auto argument = firstArgument(asView(*cmdline.bytes))) {
            identity.executablePath = resolvedPath(*argument);
            if (identity.executablePath)
                return identity;
        }
    }
    const FileReadResult stat = readKernelFile(pidDirectory + "/stat");
    if (stat.bytes) {
        if (const auto parsed = parseProcPidStat(asView(*stat.bytes)))
            identity.name = parsed->name;
    }
    return identity;
}
