#include "platform/linux/DesktopApplicationIdentities.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/ServiceManagerRecognition.h"
#include "platform/linux/SystemdApplicationUnit.h"

#include <gtest/gtest.h>

#include <string_view>

using namespace std::string_view_literals;

namespace {

const QString kFixture = QStringLiteral(KW_FIXTURES_DIR "/xdg-desktop");

// The expected text of a row: UTF-8, or nothing.
using Expected = std::optional<const char *>;
std::optional<QString> text(Expected utf8)
{
    return utf8 ? std::optional<QString>(QString::fromUtf8(*utf8)) : std::nullopt;
}

TEST(SystemdApplicationUnitTest, ApplicationIDOfEachUnitForm)
{
    const std::pair<std::string_view, Expected> rows[] = {
        // Scopes: launcher optional, random part required.
        {"app-gnome-org.gnome.Nautilus-3245.scope", "org.gnome.Nautilus"},
        {"app-org.kde.konsole-5b1c1f0b.scope", "org.kde.konsole"},
        {"app-flatpak-org.mozilla.firefox-12345.scope", "org.mozilla.firefox"},
        {"app-gnome-firefox\\x2desr-4567.scope", "firefox-esr"},
        {"app-firefox.scope", std::nullopt},
        {"app-gnome-firefox-.scope", std::nullopt},
        // Services: optional launcher, optional @instance, optional -autostart.
        {"app-org.gnome.Evolution.service", "org.gnome.Evolution"},
        {"app-gnome-org.gnome.Evolution@8f2a.service", "org.gnome.Evolution"},
        {"app-gnome-xdg\\x2duser\\x2ddirs-autostart.service", "xdg-user-dirs"},
        {"app-gnome-tracker@autostart.service", "tracker"},
        // Slices: one level only.
        {"app-org.gnome.Terminal.slice", "org.gnome.Terminal"},
        {"app-gnome.slice", "gnome"},
        {"app-gnome-nested.slice", std::nullopt},
        // Not an application's unit.
        {"app.slice", std::nullopt},
        {"user@1000.service", std::nullopt},
        {"session-2.scope", std::nullopt},
        {"vte-spawn-1d2c.scope", std::nullopt},
        {"app-.service", std::nullopt},
        {"app--x-1.scope", std::nullopt},
        {"app-foo.socket", std::nullopt},
        {"", std::nullopt},
        // A malformed escape stays as written; a non-UTF-8 byte is repaired.
        {"app-bad\\x2g-1.scope", "bad\\x2g"},
        {"app-caf\\xc3\\xa9-1.scope", "café"},
    };
    for (const auto &[unit, id] : rows)
        EXPECT_EQ(applicationIDFromUnitName(unit), text(id)) << unit;
}

TEST(SystemdApplicationUnitTest, ApplicationIDFromCgroupFiles)
{
    const std::tuple<const char *, std::string_view, Expected> rows[] = {
        {"unified hierarchy, app scope",
         "0::/user.slice/user-1000.slice/user@1000.service/app.slice/"
         "app-gnome-org.gnome.Nautilus-3245.scope\n"sv,
         "org.gnome.Nautilus"},
        {"shell in a terminal: the terminal's slice encloses the shell's scope",
         "0::/user.slice/user-1000.slice/user@1000.service/app.slice/"
         "app-org.gnome.Terminal.slice/vte-spawn-5d4e.scope\n"sv,
         "org.gnome.Terminal"},
        {"innermost unit wins over an enclosing slice",
         "0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-outer.slice/"
         "app-gnome-inner-77.scope\n"sv,
         "inner"},
        {"hybrid: the unified line is used",
         "12:pids:/user.slice\n1:name=systemd:/user.slice/app-legacy-1.scope\n"
         "0::/user.slice/user@1000.service/app.slice/app-unified-2.scope\n"sv,
         "unified"},
        {"legacy only",
         "5:cpu,cpuacct:/\n1:name=systemd:/user.slice/user@1000.service/app-legacy-1.scope\n"sv,
         "legacy"},
        {"session process", "0::/user.slice/user-1000.slice/session-2.scope\n"sv, std::nullopt},
        {"container root", "0::/\n"sv, std::nullopt},
        {"system service", "0::/system.slice/cron.service\n"sv, std::nullopt},
        {"empty", ""sv, std::nullopt},
        {"garbage", "no colons here\n::\n0:x\n"sv, std::nullopt},
        {"no trailing newline", "0::/app.slice/app-x-1.scope"sv, "x"},
        {"colon inside the path", "0::/app.slice/app-a:b-1.scope\n"sv, "a:b"},
    };
    for (const auto &[name, cgroup, id] : rows)
        EXPECT_EQ(applicationIDFromCgroup(cgroup), text(id)) << name;
}

TEST(DesktopEntryTest, NamePrefersChineseInTheMainGroup)
{
    const std::tuple<const char *, std::string_view, Expected> rows[] = {
        {"chinese wins", "[Desktop Entry]\nName=Files\nName[zh_CN]=文件\n"sv, "文件"},
        {"chinese before plain", "[Desktop Entry]\nName[zh_CN]=文件\nName=Files\n"sv, "文件"},
        {"plain only", "[Desktop Entry]\nName=Files\nName[de]=Dateien\n"sv, "Files"},
        {"blanks around the sign, escapes", "[Desktop Entry]\n Name = A\\sB\\\\C \r\n"sv, "A B\\C"},
        {"escaped line breaks and tabs", "[Desktop Entry]\nName=A\\nB\\tC\n"sv, "A\nB\tC"},
        {"action names do not count",
         "[Desktop Entry]\nType=Application\n[Desktop Action x]\nName=Other\n"sv, std::nullopt},
        {"a group before the main one is skipped",
         "# comment\n[Other]\nName=No\n[Desktop Entry]\nName=Yes\n"sv, "Yes"},
        {"empty value is no name", "[Desktop Entry]\nName=\n"sv, std::nullopt},
        {"no group", "Name=Loose\n"sv, std::nullopt},
        {"empty file", ""sv, std::nullopt},
        {"invalid UTF-8 is repaired",
         "[Desktop Entry]\nName=A\xff"
         "B\n"sv,
         "A\xef\xbf\xbd"
         "B"},
    };
    for (const auto &[description, entry, expected] : rows)
        EXPECT_EQ(parseDesktopEntryName(entry), text(expected)) << description;
}

TEST(DesktopEntryTest, DataDirectoriesFollowTheXDGDefaults)
{
    EXPECT_EQ(xdgDataDirectories({}, {}, QStringLiteral("/home/u")),
              (QStringList{"/home/u/.local/share", "/usr/local/share", "/usr/share"}));
    EXPECT_EQ(xdgDataDirectories(QStringLiteral("/data"), QStringLiteral("/a:relative::/b:/a"), {}),
              (QStringList{"/data", "/a", "/b"}));
    EXPECT_EQ(xdgDataDirectories({}, {}, {}), (QStringList{"/usr/local/share", "/usr/share"}));
}

TEST(DesktopEntryTest, FindsTheFirstDirectoryThatHasTheEntry)
{
    const QStringList directories = {kFixture + "/home/.local/share", kFixture + "/usr/local/share",
                                     kFixture + "/usr/share", kFixture + "/missing"};
    EXPECT_EQ(findDesktopEntry("org.gnome.Terminal", directories),
              kFixture + "/home/.local/share/applications/org.gnome.Terminal.desktop");
    EXPECT_EQ(findDesktopEntry("firefox", directories),
              kFixture + "/usr/share/applications/firefox.desktop");
    EXPECT_EQ(findDesktopEntry("absent", directories), std::nullopt);
    EXPECT_EQ(findDesktopEntry("../applications/firefox", directories), std::nullopt);
    EXPECT_EQ(findDesktopEntry("", directories), std::nullopt);
}

TEST(DesktopApplicationIdentitiesTest, NamesFromTheEntryOrTheApplicationID)
{
    DesktopApplicationIdentities identities(
        {kFixture + "/home/.local/share", kFixture + "/usr/share"});
    const std::tuple<const char *, QString, const char *> rows[] = {
        {"org.gnome.Terminal",
         kFixture + "/home/.local/share/applications/org.gnome.Terminal.desktop", "终端"},
        {"firefox", kFixture + "/usr/share/applications/firefox.desktop", "Firefox Web Browser"},
        {"nameless", kFixture + "/usr/share/applications/nameless.desktop", "nameless"},
        {"org.example.NotInstalled", "org.example.NotInstalled", "NotInstalled"},
        {"trailing.", "trailing.", "trailing."},
    };
    for (const auto &[id, path, name] : rows) {
        const DesktopApplicationIdentity identity = identities.identityForApplicationID(id);
        EXPECT_EQ(identity.applicationPath, path) << id;
        EXPECT_EQ(identity.applicationName, QString::fromUtf8(name)) << id;
    }
}

TEST(DesktopApplicationIdentitiesTest, CgroupAnswersAreSharedAcrossTicks)
{
    DesktopApplicationIdentities identities({kFixture + "/usr/share"});
    const QByteArray firefox = "0::/user.slice/app.slice/app-gnome-firefox-99.scope\n";
    const QByteArray session = "0::/user.slice/session-2.scope\n";

    const ControlGroupFacts first = identities.factsForCgroup(firefox);
    ASSERT_TRUE(first.application);
    EXPECT_EQ(first.application->applicationName, QStringLiteral("Firefox Web Browser"));
    EXPECT_EQ(first.path, QStringLiteral("/user.slice/app.slice/app-gnome-firefox-99.scope"));
    EXPECT_EQ(identities.factsForCgroup(session).application, std::nullopt);
    identities.finishTick();

    // The next tick hands out the very same strings, not equal copies.
    const ControlGroupFacts second = identities.factsForCgroup(firefox);
    ASSERT_TRUE(second.application);
    EXPECT_EQ(second.application->applicationPath.constData(),
              first.application->applicationPath.constData());
    EXPECT_EQ(second.path.constData(), first.path.constData());
    identities.finishTick();
    identities.finishTick(); // a tick without the process
    const ControlGroupFacts later = identities.factsForCgroup(firefox);
    ASSERT_TRUE(later.application); // parsed again, same answer, still one entry per ID
    EXPECT_EQ(later.application->applicationPath.constData(),
              first.application->applicationPath.constData());
}

TEST(ServiceManagerRecognitionTest, KnowsTheUsersServiceManagerByItsCgroupOnly)
{
    const std::pair<const char *, bool> rows[] = {
        {"/user.slice/user-1000.slice/user@1000.service/init.scope", true},
        {"/user.slice/user@0.service/init.scope", true},
        {"/init.scope", false}, // the system manager: pid 1 already
        {"/user.slice/user-1000.slice/user@1000.service/app.slice/init.scope", false},
        {"/user.slice/user-1000.slice/user@.service/init.scope", false},
        {"/user.slice/user-1000.slice/user@10x0.service/init.scope", false},
        {"/user.slice/user-1000.slice/user@1000.service/init.scope/child", false},
        {"/user.slice/user-1000.slice/session-2.scope", false},
        {"user@1000.service/init.scope", false},
        {"", false},
    };
    for (const auto &[path, expected] : rows)
        EXPECT_EQ(isUserServiceManagerCgroup(path), expected) << path;
}

} // namespace
