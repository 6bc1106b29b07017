#include "platform/linux/DesktopApplicationIdentities.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/ServiceManagerRecognition.h"
#include "platform/linux/SystemdApplicationUnit.h"

DesktopApplicationIdentities::DesktopApplicationIdentities(QStringList dataDirectories)
    : m_dataDirectories(std::move(dataDirectories))
{
}

DesktopApplicationIdentity
DesktopApplicationIdentities::identityForApplicationID(const QString &applicationID)
{
    const auto known = m_byApplicationID.constFind(applicationID);
    if (known != m_byApplicationID.cend())
        return *known;

    DesktopApplicationIdentity identity;
    std::optional<QString> name;
    if (const std::optional<QString> path = findDesktopEntry(applicationID, m_dataDirectories)) {
        identity.applicationPath = *path;
        const FileReadResult entry = readKernelFile(*path);
        if (entry.bytes)
            name = parseDesktopEntryName(asView(*entry.bytes));
    } else {
        identity.applicationPath = applicationID;
    }
    // "org.gnome.Terminal" without an entry (or without a Name) reads "Terminal".
    identity.applicationName =
        name ? *name : applicationID.sliced(applicationID.lastIndexOf(QLatin1Char('.')) + 1);
    if (identity.applicationName.isEmpty())
        identity.applicationName = applicationID;
    m_byApplicationID.insert(applicationID, identity);
    return identity;
}

ControlGroupFacts DesktopApplicationIdentities::factsForCgroup(const QByteArray &procPidCgroup)
{
    if (const auto current = m_byCgroup.constFind(procPidCgroup); current != m_byCgroup.cend())
        return *current;
    ControlGroupFacts facts;
    if (const auto previous = m_byCgroupPreviousTick.constFind(procPidCgroup);
        previous != m_byCgroupPreviousTick.cend()) {
        facts = *previous;
    } else if (const std::optional<std::string_view> path =
                   systemdCgroupPath(asView(procPidCgroup))) {
        facts.path = QString::fromUtf8(path->data(), qsizetype(path->size()));
        facts.isUserServiceManager = isUserServiceManagerCgroup(*path);
        if (const std::optional<QString> applicationID =
                applicationIDFromCgroup(asView(procPidCgroup)))
            facts.application = identityForApplicationID(*applicationID);
    }
    m_byCgroup.insert(procPidCgroup, facts);
    return facts;
}

void DesktopApplicationIdentities::finishTick()
{
    m_byCgroupPreviousTick = std::move(m_byCgroup);
    m_byCgroup.clear();
}
