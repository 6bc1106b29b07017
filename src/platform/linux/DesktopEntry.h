#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <string_view>

// Desktop entries (the freedesktop.org .desktop files): the files that name
// an application for menus and launchers.

// The display name of a desktop entry: the "Name[zh_CN]" key of its
// [Desktop Entry] group, as the interface is Chinese, else "Name". Nothing
// when the group or both keys are missing or empty. Escapes (\s \n \t \r \\)
// are resolved; invalid UTF-8 is repaired, never dropped.
std::optional<QString> parseDesktopEntryName(std::string_view text);

// The XDG data directories in lookup order, from the values of XDG_DATA_HOME,
// XDG_DATA_DIRS and HOME (empty when unset), with the XDG base directory
// defaults: ~/.local/share, then /usr/local/share and /usr/share. Relative
// entries are ignored, as XDG requires.
QStringList xdgDataDirectories(const QString &dataHome, const QString &dataDirs,
                               const QString &home);

// The same from this process's environment.
QStringList xdgDataDirectoriesFromEnvironment();

// The path of "<ApplicationID>.desktop" in the first data directory's
// "applications" folder that has it; nothing when none does.
std::optional<QString> findDesktopEntry(const QString &applicationID,
                                        const QStringList &dataDirectories);
