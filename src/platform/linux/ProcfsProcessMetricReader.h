#pragma once

#include "platform/linux/DesktopApplicationIdentities.h"
#include "platform/linux/ServiceManagerRecognition.h"
#include "process/RawProcessMetric.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <sys/types.h>

// The current user's processes from <procRoot>/<pid>. The owner test comes
// first and costs one stat of the pid directory, so another user's process
// costs nothing more; an owned one is then read through its open directory:
// exe, stat, statm, io, cmdline, cwd. A process that vanishes or fails at any
// step is left out, except that an unreadable io counts 0 bytes, and an
// unreadable cwd gives no project. The argument vector and the working
// directory go only into the command redaction and end there.
//
// The application identity comes from the systemd unit named in
// /proc/<pid>/cgroup and the desktop entries under `applicationDataDirectories`
// (the XDG data directories): `applicationPath` is the entry's path, else the
// ApplicationID, and `applicationName` the entry's Name. Service managers are
// pid 1 and the processes that run pid 1's executable (worked out once, on
// the first tick).
class ProcfsProcessMetricReader final : public RawProcessMetricReading {
public:
    explicit ProcfsProcessMetricReader(QString procRoot = QStringLiteral("/proc"),
                                       QStringList applicationDataDirectories = {});

    std::vector<RawProcessMetric> readMetrics(TimePoint now) override;

private:
    std::optional<RawProcessMetric> readProcess(pid_t pid, long long bootTimeSeconds,
                                                TimePoint now);

    QByteArray m_procRoot;
    QByteArray m_pidPath; // reused for every pid: "<procRoot>/<pid>"
    uid_t m_userID;
    long m_clockTicksPerSecond;
    std::uint64_t m_pageSize;
    DesktopApplicationIdentities m_applications;
    std::optional<ServiceManagerIdentity> m_serviceManager;
};

// The executable path without the " (deleted)" that marks a replaced binary.
QString executablePathShown(const QString &executablePath);

// The process's short name: its comm, unless the kernel cut a longer
// executable name to 15 bytes, or the comm is empty; then the executable's
// last path component.
QString processDisplayName(const QString &comm, const QString &executablePath);
