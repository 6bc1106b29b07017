#include "platform/linux/ProcfsProcessIdentityReader.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcPidStatus.h"
#include "platform/linux/ProcStat.h"
#include "platform/linux/ProcessName.h"
#include "platform/linux/UniqueFileDescriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

// Reads a whole small file below an open directory; nothing on any failure.
std::optional<QByteArray> readFileAt(int directory, const char *name)
{
    UniqueFileDescriptor file(::openat(directory, name, O_RDONLY | O_CLOEXEC));
    if (!file.isValid())
        return std::nullopt;
    QByteArray bytes;
    char buffer[4096];
    for (;;) {
        const ssize_t count = ::read(file.get(), buffer, sizeof buffer);
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return std::nullopt;
        }
        if (count == 0)
            return bytes;
        bytes.append(buffer, count);
    }
}

// The link's target; nothing when it cannot be read (kernel thread, exited
// process), is cut short, or was refused (then `refused` is set).
std::optional<QByteArray> readLinkAt(int directory, const char *name, bool &refused)
{
    char buffer[4096];
    const ssize_t length = ::readlinkat(directory, name, buffer, sizeof buffer);
    refused = length < 0 && (errno == EACCES || errno == EPERM);
    if (length <= 0 || static_cast<std::size_t>(length) >= sizeof buffer)
        return std::nullopt;
    return QByteArray(buffer, length);
}

} // namespace

ProcfsProcessIdentityReader::ProcfsProcessIdentityReader(QString procRoot)
    : m_procRoot(std::move(procRoot))
{
}

std::optional<ProcessTerminationTarget> ProcfsProcessIdentityReader::readIdentity(pid_t pid)
{
    if (pid <= 0)
        return std::nullopt; // "/proc/0" and "/proc/-1" name no process

    const QByteArray root = m_procRoot.toLocal8Bit();
    const QByteArray directoryPath = root + '/' + QByteArray::number(pid);
    UniqueFileDescriptor directory(
        ::open(directoryPath.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory.isValid())
        return std::nullopt;

    // The owner of the directory, as the process metric reader's owner test
    // sees it, but through the descriptor that the other reads use.
    struct stat info {};
    if (::fstat(directory.get(), &info) != 0)
        return std::nullopt;

    const std::optional<QByteArray> statText = readFileAt(directory.get(), "stat");
    if (!statText)
        return std::nullopt;
    const std::optional<ProcPidStat> stat = parseProcPidStat(asView(*statText));
    if (!stat)
        return std::nullopt;

    // /proc/<tid> of a thread reads like a process; its Tgid gives it away.
    const std::optional<QByteArray> statusText = readFileAt(directory.get(), "status");
    if (!statusText || parseProcPidStatusThreadGroup(asView(*statusText)) != pid)
        return std::nullopt;

    // Another user's exe (or a non-dumpable process's) is refused to all but
    // root. The process is there all the same, and its owner is known: the
    // reading stands with no executable, so the check refuses it for its
    // owner, or as a changed executable, rather than calling it gone.
    bool executableRefused = false;
    const std::optional<QByteArray> executable =
        readLinkAt(directory.get(), "exe", executableRefused);
    if (!executable && !executableRefused)
        return std::nullopt;

    const FileReadResult machineStat = readKernelFile(root + "/stat");
    if (!machineStat.bytes)
        return std::nullopt;
    const std::optional<long long> bootTime = parseProcStatBootTime(asView(*machineStat.bytes));
    if (!bootTime)
        return std::nullopt;

    ProcessTerminationTarget target;
    target.identity.pid = pid;
    target.identity.startTime =
        processStartTime(*bootTime, stat->startTicks, systemClockTicksPerSecond());
    // Invalid UTF-8 in a path is repaired the same way as in the metric reader.
    target.identity.executablePath = QString::fromUtf8(executable.value_or(QByteArray()));
    target.userID = info.st_uid;
    target.name = processDisplayName(stat->name, target.identity.executablePath);
    return target;
}
