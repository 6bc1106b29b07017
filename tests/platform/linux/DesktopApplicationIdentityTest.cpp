#include "platform/linux/DesktopApplicationIdentities.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/ServiceManagerRecognition.h"
#include "platform/linux/SystemdApplicationUnit.h"
#include "support/FixtureTable.h"

#include <gtest/gtest.h>

namespace {

const QString kFixture = QStringLiteral(KW_FIXTURES_DIR "/xdg-desktop");

TEST(SystemdApplicationUnitTest, ApplicationIDOfEachUnitFormAndEachCgroupFile)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("systemd-unit-application-ids")))
        EXPECT_EQ(applicationIDFromUnitName(row.view(0)), row.text(1)) << row.where;
    for (const FixtureRow &row : fixtureTable(QStringLiteral("cgroup-application-ids")))
        EXPECT_EQ(applicationIDFromCgroup(row.view(0)), row.text(1)) << row.where;
    EXPECT_EQ(applicationIDFromUnitName(""), std::nullopt);
    EXPECT_EQ(applicationIDFromCgroup(""), std::nullopt);
}

TEST(DesktopEntryTest, NamePrefersChineseInTheMainGroup)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("desktop-entry-names")))
        EXPECT_EQ(parseDesktopEntryName(row.view(0)), row.text(1)) << row.where;
    EXPECT_EQ(parseDesktopEntryName(""), std::nullopt);
}

TEST(DesktopEntryTest, DataDirectoriesFollowTheXDGDefaults)
{
    EXPECT_EQ(xdgDataDirectories({}, {}, QStringLiteral("/home/u")),
              (QStringList{"/home/u/.local/share", "/usr/local/share", "/usr/share"}));
    EXPECT_EQ(xdgDataDirectories(QStringLiteral("/data"), QStringLiteral("/a:relative::/b:/a"), {}),
              (QStringList{"/data", "/a", "/b"}));
    EXPECT_EQ(xdgDataDirectories({}, {}, {}), (QStringList{"/usr/local/share", "/usr/share"}));
}

// tests/fixtures/tables/desktop-application-identities
TEST(DesktopApplicationIdentitiesTest, NamesFromTheEntryOrTheApplicationID)
{
    DesktopApplicationIdentities identities(
        {kFixture + "/home/.local/share", kFixture + "/usr/share"});
    for (const FixtureRow &row : fixtureTable(QStringLiteral("desktop-application-identities"))) {
        const QString path = *row.text(1);
        const DesktopApplicationIdentity identity =
            identities.identityForApplicationID(*row.text(0));
        EXPECT_EQ(identity.applicationPath, path.startsWith(u'/') ? kFixture + path : path)
            << row.where;
        EXPECT_EQ(identity.applicationName, row.text(2)) << row.where;
    }
}

// What the odd-process fixture's reads give is its table's; here, that the
// answers share their strings: with the next tick, which keeps them, and
// with one that parses them again after a tick without the process.
TEST(DesktopApplicationIdentitiesTest, CgroupAnswersShareTheirStringsAcrossTicks)
{
    DesktopApplicationIdentities identities({kFixture + "/usr/share"});
    const QByteArray firefox = "0::/user.slice/app.slice/app-gnome-firefox-99.scope\n";
    const ControlGroupFacts first = identities.factsForCgroup(firefox);
    ASSERT_TRUE(first.application);
    for (const int ticksBetween : {1, 2}) {
        for (int tick = 0; tick < ticksBetween; ++tick)
            identities.finishTick();
        const ControlGroupFacts again = identities.factsForCgroup(firefox);
        ASSERT_TRUE(again.application);
        EXPECT_EQ(again.application->applicationPath.constData(),
                  first.application->applicationPath.constData());
        if (ticksBetween == 1)
            EXPECT_EQ(again.path.constData(), first.path.constData());
    }
}

TEST(ServiceManagerRecognitionTest, KnowsTheUsersServiceManagerByItsCgroupOnly)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("user-service-manager-cgroups"))) {
        EXPECT_EQ(isUserServiceManagerCgroup(row.view(0)), row.fields[1] == "true") << row.where;
    }
    EXPECT_FALSE(isUserServiceManagerCgroup(""));
}

} // namespace
