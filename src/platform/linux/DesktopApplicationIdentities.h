#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

// What keys and names a desktop application's load source on Linux.
struct DesktopApplicationIdentity {
    QString applicationPath; // the desktop entry's path, else the ApplicationID itself
    QString applicationName; // the entry's Name, else the ApplicationID's last dot-separated part

    bool operator==(const DesktopApplicationIdentity &) const = default;
};

// What the process reader takes from the text of one /proc/<pid>/cgroup.
struct ControlGroupFacts {
    QString path; // the systemd cgroup path; empty when the text names none
    std::optional<DesktopApplicationIdentity> application;
    bool isUserServiceManager = false; // see ServiceManagerRecognition.h

    bool operator==(const ControlGroupFacts &) const = default;
};

// Resolves the identity of processes from the text of their
// /proc/<pid>/cgroup, for the process reader. Owned by one reader and used on
// its thread only.
//
// Cheap on every tick: a desktop entry is looked up once per ApplicationID
// for the life of the reader, and a cgroup text that was seen on the previous
// tick is not parsed again. The cgroup file itself is read on every tick:
// launchers move a process into its application's scope just after starting
// it, so an answer remembered per process could be stale. The identities
// handed out are the same shared strings tick after tick, so an hour of
// history holds each name once.
class DesktopApplicationIdentities {
public:
    explicit DesktopApplicationIdentities(QStringList dataDirectories);

    ControlGroupFacts factsForCgroup(const QByteArray &procPidCgroup);
    DesktopApplicationIdentity identityForApplicationID(const QString &applicationID);

    // Call once per tick, after all processes: forgets the cgroup texts that
    // this tick did not ask for, so the memory stays bounded by what runs.
    void finishTick();

private:
    QStringList m_dataDirectories;
    QHash<QString, DesktopApplicationIdentity> m_byApplicationID;
    QHash<QByteArray, ControlGroupFacts> m_byCgroup;
    QHash<QByteArray, ControlGroupFacts> m_byCgroupPreviousTick;
};
