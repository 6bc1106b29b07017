#include "platform/linux/ProcfsProcessMetricReader.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/ProcPidDirectory.h"
#include "platform/linux/ProcPidFiles.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcStat.h"
#include "process/CommandRedaction.h"

#include <charconv>
#include <climits>
#include <memory>

#include <dirent.h>
#include <unistd.h>

namespace {

struct DirectoryCloser {
    void operator()(DIR *directory) const { ::closedir(directory); }
};
using OpenDirectory = std::unique_ptr<DIR, DirectoryCloser>;

// A pid from a directory entry name: decimal digits only, above 0.
std::optional<pid_t> pidOfEntry(const char *name)
{
    const std::string_view text(name);
    if (text.empty() || text.front() < '1' || text.front() > '9')
        return std::nullopt;
    long long value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || value > INT_MAX)
        return std::nullopt;
    return static_cast<pid_t>(value);
}

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

ProcfsProcessMetricReader::ProcfsProcessMetricReader(QString procRoot,
                                                     QStringList applicationDataDirectories)
    : m_procRoot(procRoot.toLocal8Bit()),
      m_userID(::getuid()),
      m_clockTicksPerSecond(systemClockTicksPerSecond()),
      m_applications(std::move(applicationDataDirectories))
{
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    m_pageSize = pageSize > 0 ? static_cast<std::uint64_t>(pageSize) : 4096;
}

std::vector<RawProcessMetric> ProcfsProcessMetricReader::readMetrics(TimePoint now)
{
    // The boot time is read on every tick: the kernel derives it from the wall
    // clock, so after the clock is set it moves, and start times must move
    // with it to stay equal to what the identity reader computes.
    const FileReadResult stat = readKernelFile(m_procRoot + "/stat");
    const std::optional<long long> bootTime =
        stat.bytes ? parseProcStatBootTime(asView(*stat.bytes)) : std::nullopt;
    if (!bootTime)
        return {};

    const OpenDirectory directory(::opendir(m_procRoot.constData()));
    if (!directory)
        return {};
    // Pid 1 does not change while the machine runs.
    if (!m_serviceManager)
        m_serviceManager = readServiceManagerIdentity(m_procRoot);
    std::vector<RawProcessMetric> records;
    while (const dirent *entry = ::readdir(directory.get())) {
        const std::optional<pid_t> pid = pidOfEntry(entry->d_name);
        if (!pid)
            continue;
        if (auto record = readProcess(*pid, *bootTime, now))
            records.push_back(std::move(*record));
    }
    m_applications.finishTick();
    return records;
}

std::optional<RawProcessMetric> ProcfsProcessMetricReader::readProcess(pid_t pid,
                                                                       long long bootTimeSeconds,
                                                                       TimePoint now)
{
    m_pidPath = m_procRoot;
    m_pidPath += '/';
    m_pidPath += QByteArray::number(pid);
    const std::optional<uid_t> owner = procPidOwner(m_pidPath);
    if (!owner || *owner != m_userID)
        return std::nullopt;

    const std::optional<ProcPidDirectory> directory = ProcPidDirectory::open(m_pidPath);
    if (!directory)
        return std::nullopt;

    // First, as it is the cheapest test that rules out kernel threads (about
    // half of all pids on a desktop) and processes already gone.
    const std::optional<QByteArray> exe = directory->readLink("exe");
    if (!exe)
        return std::nullopt;

    // Room for the longest stat line (52 fields of at most 20 digits and a
    // 64-byte name); statm and io are far shorter.
    char buffer[2048];
    const auto statLength = directory->readSmallFile("stat", buffer);
    if (!statLength)
        return std::nullopt;
    const std::optional<ProcPidStat> stat = parseProcPidStat(std::string_view(buffer, *statLength));
    if (!stat)
        return std::nullopt;

    const auto statmLength = directory->readSmallFile("statm", buffer);
    if (!statmLength)
        return std::nullopt;
    const auto residentPages =
        parseProcPidStatmResidentPages(std::string_view(buffer, *statmLength));
    std::uint64_t residentBytes = 0;
    if (!residentPages || __builtin_mul_overflow(*residentPages, m_pageSize, &residentBytes))
        return std::nullopt;

    const auto cpuNanoseconds =
        cpuTicksToNanoseconds(stat->userTicks, stat->systemTicks, m_clockTicksPerSecond);
    if (!cpuNanoseconds)
        return std::nullopt;

    // Without permission for io (or on a kernel without task I/O accounting)
    // the process still counts, with no disk traffic.
    std::uint64_t diskBytes = 0;
    if (const auto ioLength = directory->readSmallFile("io", buffer))
        diskBytes = parseProcPidIoDiskBytes(std::string_view(buffer, *ioLength)).value_or(0);

    RawProcessMetric record;
    record.identity.pid = pid;
    record.identity.startTime =
        processStartTime(bootTimeSeconds, stat->startTicks, m_clockTicksPerSecond);
    // A trailing " (deleted)" stays: a replaced binary is another executable.
    record.identity.executablePath = QString::fromUtf8(*exe);
    record.parentPID = stat->parentPID;
    record.processGroupID = stat->processGroupID;
    record.userID = *owner;
    record.isServiceManager =
        m_serviceManager->matches(pid, record.identity.executablePath, stat->name);
    record.name = processDisplayName(stat->name, record.identity.executablePath);
    if (const std::optional<QByteArray> cgroup = directory->readFile("cgroup")) {
        if (auto application = m_applications.identityForCgroup(*cgroup)) {
            record.applicationPath = std::move(application->applicationPath);
            record.applicationName = std::move(application->applicationName);
        }
    }
    record.residentBytes = residentBytes;
    record.totalCPUNanoseconds = *cpuNanoseconds;
    record.diskBytes = diskBytes;
    record.sampledAt = now;

    {
        // The raw vector and directory live only in this block.
        const std::optional<QByteArray> cmdline = directory->readFile("cmdline");
        const QStringList arguments =
            cmdline ? parseProcPidCmdline(*cmdline) : QStringList();
        const std::optional<QByteArray> cwd = directory->readLink("cwd");
        const std::optional<QString> workingDirectory =
            cwd ? std::optional<QString>(QString::fromUtf8(*cwd)) : std::nullopt;
        record.command =
            makeRedactedCommandSummary(executablePathShown(record.identity.executablePath),
                                       arguments, workingDirectory);
    }
    return record;
}
