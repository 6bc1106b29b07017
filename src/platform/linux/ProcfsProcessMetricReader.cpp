#include "platform/linux/ProcfsProcessMetricReader.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/OpenFileLimit.h"
#include "platform/linux/ProcPidFiles.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcStat.h"
#include "platform/linux/ProcessName.h"
#include "platform/linux/ProcessReadGate.h"
#include "platform/linux/ServiceManagerRecognition.h"
#include "platform/linux/SystemdApplicationUnit.h"
#include "process/CommandRedaction.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <iterator>
#include <memory>

#include <dirent.h>
#include <pwd.h>
#include <unistd.h>

namespace {

struct DirectoryCloser {
    void operator()(DIR *directory) const { ::closedir(directory); }
};
using OpenDirectory = std::unique_ptr<DIR, DirectoryCloser>;

// The open-file limit asked for: a desktop of several thousand processes.
constexpr rlim_t kOpenFileCeiling = 65536;
// Descriptors left to the rest of the program: Qt, the sensors, the pidfds.
constexpr rlim_t kReservedDescriptors = 256;

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

std::size_t keptCapacityFor(rlim_t openFileLimit)
{
    if (openFileLimit <= kReservedDescriptors)
        return 0;
    return std::size_t((openFileLimit - kReservedDescriptors) /
                       rlim_t(ProcPidDirectory::maximumDescriptors));
}

QStringList accountDirectories(const std::optional<QString> &home)
{
    if (!home || home->isEmpty() || *home == QLatin1String("/"))
        return {};
    QString path = *home;
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    if (slash <= 0)
        return {path};
    return {path, path.first(slash)};
}

} // namespace

std::optional<QString> currentUserHomeDirectory()
{
    long size = ::sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(std::size_t(size > 0 ? size : 16384));
    passwd entry{};
    passwd *found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found ||
        !found->pw_dir || found->pw_dir[0] != '/')
        return std::nullopt;
    struct FreeDeleter {
        void operator()(char *pointer) const { std::free(pointer); }
    };
    // Fedora's /home is a link to /var/home; a working directory read from
    // /proc is the resolved one.
    const std::unique_ptr<char, FreeDeleter> resolved(::realpath(found->pw_dir, nullptr));
    return QString::fromUtf8(resolved ? resolved.get() : found->pw_dir);
}

ProcfsProcessMetricReader::ProcfsProcessMetricReader(QString procRoot,
                                                     QStringList applicationDataDirectories,
                                                     std::optional<QString> homeDirectory)
    : m_procRoot(procRoot.toLocal8Bit()), m_userID(::getuid()),
      m_clockTicksPerSecond(systemClockTicksPerSecond()),
      m_applications(std::move(applicationDataDirectories)),
      m_accountDirectories(accountDirectories(homeDirectory)),
      m_keptCapacity(keptCapacityFor(raiseOpenFileLimit(kOpenFileCeiling)))
{
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    m_pageSize = pageSize > 0 ? static_cast<std::uint64_t>(pageSize) : 4096;
}

void ProcfsProcessMetricReader::visitMetrics(TimePoint now, const Visitor &visit)
{
    // The boot time is read on every tick: the kernel derives it from the wall
    // clock, so after the clock is set it moves, and start times must move
    // with it to stay equal to what the identity reader computes.
    const FileReadResult stat = readKernelFile(m_procRoot + "/stat");
    const std::optional<long long> bootTime =
        stat.bytes ? parseProcStatBootTime(asView(*stat.bytes)) : std::nullopt;
    const OpenDirectory directory(bootTime ? ::opendir(m_procRoot.constData()) : nullptr);
    if (!directory) {
        m_kept.clear();
        m_empty.clear();
        return;
    }
    ++m_tick;
    m_records.clear();
    m_records.reserve(m_kept.size() + 16);
    m_unkept.clear();
    std::vector<ListedProcess> listed;
    listed.reserve(m_kept.size() + 16);
    std::vector<std::size_t> carried;
    while (const dirent *entry = ::readdir(directory.get())) {
        const std::optional<pid_t> pid = pidOfEntry(entry->d_name);
        if (!pid)
            continue;
        bool wasCarried = false;
        unsigned long long startTicks = 0;
        if (const RawProcessMetric *record =
                readProcess(*pid, *bootTime, now, false, wasCarried, startTicks)) {
            if (wasCarried)
                carried.push_back(m_records.size());
            listed.emplace_back(*pid, startTicks);
            m_records.push_back(record);
        }
    }
    std::sort(listed.begin(), listed.end());

    // A process that left hands its children to another parent without them
    // running: a child whose record was carried is read again, in full.
    std::vector<ListedProcess> departed;
    std::set_difference(m_listed.begin(), m_listed.end(), listed.begin(), listed.end(),
                        std::back_inserter(departed));
    const auto hasDeparted = [&](pid_t pid) {
        const auto found =
            std::lower_bound(departed.begin(), departed.end(), ListedProcess{pid, 0});
        return found != departed.end() && found->first == pid;
    };
    for (const std::size_t index : departed.empty() ? std::vector<std::size_t>() : carried) {
        const RawProcessMetric *&record = m_records[index];
        if (!hasDeparted(record->parentPID))
            continue;
        const pid_t pid = record->identity.pid;
        // The kept record may go while it is read again; gone meanwhile, it
        // is left out.
        record = nullptr;
        bool wasCarried = false;
        unsigned long long startTicks = 0;
        record = readProcess(pid, *bootTime, now, true, wasCarried, startTicks);
    }
    m_listed = std::move(listed);

    // What this tick did not read has left (or is no longer this user's, or
    // no longer readable): its descriptors go with it.
    std::erase_if(m_kept, [&](const auto &entry) { return entry.second.tick != m_tick; });
    std::erase_if(m_empty, [&](const auto &entry) { return entry.second.tick != m_tick; });
    m_applications.finishTick();
    for (const RawProcessMetric *record : m_records) {
        if (record)
            visit(*record);
    }
}

const RawProcessMetric *ProcfsProcessMetricReader::readProcess(pid_t pid, long long bootTimeSeconds,
                                                              TimePoint now, bool fullRead,
                                                              bool &carried,
                                                              unsigned long long &startTicks)
{
    carried = false;
    if (const auto empty = m_empty.find(pid); empty != m_empty.end()) {
        // Its statm reads only while that very process holds the pid; the
        // sweep asks again all the same, so that nothing is hidden for good.
        EmptyProcess &process = empty->second;
        if (m_tick % kSweepTicks != process.sweepSlot &&
            readResidentBytes(process.directory, true) == std::uint64_t(0)) {
            process.tick = m_tick;
            return nullptr;
        }
        m_empty.erase(empty);
    }
    if (const auto kept = m_kept.find(pid); kept != m_kept.end()) {
        // The open directory belongs to the process it was opened for: if that
        // one has gone, every read through it fails, and the pid is read anew
        // below, for whichever process holds it now. The clock is read by pid,
        // so it is the clock of whichever process holds the pid; a read
        // through the directory after it succeeds only while the kept process
        // lives, and a process that lived at the last tick and lives still
        // held the pid all along: the clock was its own.
        KeptProcess &process = kept->second;
        // A pid the listing gave twice is read once; its record is handed
        // out already.
        if (process.tick == m_tick && !fullRead)
            return nullptr;
        ProcPidDirectory &directory = process.directory;
        if (process.ticksSinceFirstRead <= kYoungTicks)
            ++process.ticksSinceFirstRead;
        const std::optional<std::uint64_t> clock = processCPUClockNanoseconds(pid);
        const ProcessReadFacts facts{process.clock, clock, process.ticksSinceFirstRead,
                                     process.sweepSlot, m_tick};
        const ProcessRead read = fullRead ? ProcessRead::full : processRead(facts);
        // No owner test before a carry: a process changes its owner only by
        // running, which would have moved its clock.
        if (read == ProcessRead::carry ||
            (read == ProcessRead::sweep && readOutsideView(directory, true) == process.view)) {
            if (carryRecord(process, bootTimeSeconds, now)) {
                carried = true;
                startTicks = process.startTicks;
                process.tick = m_tick;
                return &process.record;
            }
        }
        std::optional<RawProcessMetric> record;
        OutsideView view;
        // Also when the clock cannot be read: a process gone fails the reads
        // and is read anew below, one whose clock is refused (EPERM) is read
        // in full on every tick.
        if (const std::optional<uid_t> owner = directory.owner(); owner && *owner == m_userID)
            record = readOpenProcess(directory, pid, *owner, bootTimeSeconds, now, true, startTicks,
                                     &view);
        const bool shortOfDescriptors = directory.takeShortOfDescriptors();
        if (record && !shortOfDescriptors && startTicks == process.startTicks) {
            process.tick = m_tick;
            process.clock = clock;
            process.record = std::move(*record);
            process.view = std::move(view);
            return &process.record;
        }
        m_kept.erase(kept);
        if (shortOfDescriptors)
            relieveDescriptorShortage();
    }

    m_pidPath = m_procRoot;
    m_pidPath += '/';
    m_pidPath += QByteArray::number(pid);
    const std::optional<uid_t> owner = procPidOwner(m_pidPath);
    if (!owner || *owner != m_userID)
        return nullptr;

    // Two tries: the second after a shortage of descriptors has closed some.
    for (int attempt = 0; attempt < 2; ++attempt) {
        bool shortOfDescriptors = false;
        std::optional<ProcPidDirectory> directory =
            ProcPidDirectory::open(m_pidPath, &shortOfDescriptors);
        const bool keep = attempt == 0 && m_kept.size() + m_empty.size() < m_keptCapacity;
        std::optional<RawProcessMetric> record;
        std::optional<std::uint64_t> clock;
        OutsideView view;
        if (directory) {
            // Between the open and the full read, which both reach the same
            // process, so the clock is that process's.
            if (keep)
                clock = processCPUClockNanoseconds(pid);
            record = readOpenProcess(*directory, pid, *owner, bootTimeSeconds, now, keep,
                                     startTicks, &view);
            shortOfDescriptors = directory->takeShortOfDescriptors() || shortOfDescriptors;
        }
        if (shortOfDescriptors) {
            relieveDescriptorShortage();
            continue;
        }
        if (!record) {
            if (directory && keep && !directory->readLink("exe") &&
                readResidentBytes(*directory, true) == std::uint64_t(0))
                m_empty.emplace(pid, EmptyProcess{std::move(*directory), m_tick,
                                                  m_nextSweepSlot++ % kSweepTicks});
            return nullptr;
        }
        if (keep) {
            KeptProcess process{std::move(*directory),
                                startTicks,
                                m_tick,
                                clock,
                                0,
                                m_nextSweepSlot++ % kSweepTicks,
                                std::move(*record),
                                std::move(view)};
            return &m_kept.insert_or_assign(pid, std::move(process)).first->second.record;
        }
        return &m_unkept.emplace_back(std::move(*record));
    }
    return nullptr;
}

bool ProcfsProcessMetricReader::carryRecord(KeptProcess &kept, long long bootTimeSeconds,
                                            TimePoint now)
{
    const std::optional<std::uint64_t> residentBytes = readResidentBytes(kept.directory, true);
    if (!residentBytes)
        return false;
    // Its CPU time stands, as its clock does; its start time follows the boot
    // time, which moves when the wall clock is set.
    RawProcessMetric &record = kept.record;
    record.identity.startTime =
        processStartTime(bootTimeSeconds, kept.startTicks, m_clockTicksPerSecond);
    record.residentBytes = *residentBytes;
    record.sampledAt = now;
    return true;
}

std::optional<std::uint64_t>
ProcfsProcessMetricReader::readResidentBytes(ProcPidDirectory &directory, bool keep) const
{
    char buffer[256]; // "size resident shared text lib data dt": seven numbers
    const auto length = directory.readSmallFile(ProcPidFile::statm, buffer, keep);
    if (!length)
        return std::nullopt;
    return parseProcPidStatmResidentBytes(std::string_view(buffer, *length), m_pageSize);
}

void ProcfsProcessMetricReader::relieveDescriptorShortage()
{
    // Kept records about to close may be handed out already this tick.
    for (const RawProcessMetric *&record : m_records) {
        if (record)
            record = &m_unkept.emplace_back(*record);
    }
    m_empty.clear();
    m_keptCapacity = m_kept.size() / 2;
    while (m_kept.size() > m_keptCapacity)
        m_kept.erase(m_kept.begin());
}

std::optional<ProcfsProcessMetricReader::OutsideView>
ProcfsProcessMetricReader::readOutsideView(ProcPidDirectory &directory, bool keep) const
{
    OutsideView view;
    // First, as it is the cheapest test that rules out kernel threads (about
    // half of all pids on a desktop) and processes already gone.
    std::optional<QByteArray> executable = directory.readLink("exe");
    if (!executable)
        return std::nullopt;
    view.executable = std::move(*executable);
    // Room for the longest stat line (52 fields of at most 20 digits and a
    // 64-byte name).
    char buffer[2048];
    const auto statLength = directory.readSmallFile(ProcPidFile::stat, buffer, keep);
    if (!statLength)
        return std::nullopt;
    std::optional<ProcPidStat> stat = parseProcPidStat(std::string_view(buffer, *statLength));
    if (!stat)
        return std::nullopt;
    view.stat = std::move(*stat);
    view.controlGroup = directory.readFile(ProcPidFile::cgroup, keep);
    if (const std::optional<QByteArray> cwd = directory.readLink("cwd"))
        view.project = projectOfWorkingDirectory(QString::fromUtf8(*cwd), m_accountDirectories);
    return view;
}

std::optional<RawProcessMetric>
ProcfsProcessMetricReader::readOpenProcess(ProcPidDirectory &directory, pid_t pid, uid_t owner,
                                           long long bootTimeSeconds, TimePoint now, bool keep,
                                           unsigned long long &startTicks, OutsideView *viewOut)
{
    std::optional<OutsideView> view = readOutsideView(directory, keep);
    if (!view)
        return std::nullopt;
    const ProcPidStat &stat = view->stat;
    startTicks = stat.startTicks;

    // The resident size from statm: stat's field 24 is no longer kept equal
    // to it. A statm that cannot be read leaves the process out, like a stat
    // that cannot: it only happens to a process that is going or to a kernel
    // we do not understand, and a resident size of 0 would be a false reading
    // that ranks, totals and charts would take for the truth.
    const std::optional<std::uint64_t> residentBytes = readResidentBytes(directory, keep);
    if (!residentBytes)
        return std::nullopt;
    const auto cpuNanoseconds =
        cpuTicksToNanoseconds(stat.userTicks, stat.systemTicks, m_clockTicksPerSecond);
    if (!cpuNanoseconds)
        return std::nullopt;

    // Without permission for io (or on a kernel without task I/O accounting)
    // the process still counts, with no disk traffic.
    std::uint64_t diskBytes = 0;
    char buffer[512];
    if (const auto ioLength = directory.readSmallFile(ProcPidFile::io, buffer, keep))
        diskBytes = parseProcPidIoDiskBytes(std::string_view(buffer, *ioLength)).value_or(0);

    RawProcessMetric record;
    record.identity.pid = pid;
    record.identity.startTime =
        processStartTime(bootTimeSeconds, stat.startTicks, m_clockTicksPerSecond);
    // A trailing " (deleted)" stays: a replaced binary is another executable.
    record.identity.executablePath = QString::fromUtf8(view->executable);
    record.parentPID = stat.parentPID;
    record.processGroupID = stat.processGroupID;
    record.userID = owner;
    record.leadsTerminalSession = stat.sessionID == pid && stat.terminal != 0;
    record.name = processDisplayName(stat.name, record.identity.executablePath);
    std::optional<ControlGroupFacts> facts;
    if (view->controlGroup)
        facts = m_applications.factsForCgroup(*view->controlGroup);
    record.isServiceManager = pid == 1 || (facts && facts->isUserServiceManager);
    if (facts) {
        record.controlGroup = facts->path;
        if (facts->application) {
            record.applicationPath = facts->application->applicationPath;
            record.applicationName = facts->application->applicationName;
        }
    }
    record.residentBytes = *residentBytes;
    record.totalCPUNanoseconds = *cpuNanoseconds;
    record.diskBytes = diskBytes;
    record.sampledAt = now;

    {
        // The raw vector lives only in this block.
        const std::optional<QByteArray> cmdline = directory.readFile(ProcPidFile::cmdline, keep);
        const QStringList arguments = cmdline ? parseProcPidCmdline(*cmdline) : QStringList();
        record.command = {
            redactedCommandText(executablePathShown(record.identity.executablePath), arguments),
            view->project};
    }
    if (viewOut)
        *viewOut = std::move(*view);
    return record;
}
