#pragma once

#include "dashboard/MenuBarPresentation.h"

#include <QImage>
#include <QString>

#include <vector>

class DashboardStore;

// The tray panel in every state, for looking at it: the store's own data
// (its latest sample, tasks and abnormal time) with the thermal state and the
// temperature set so that each state of the menu bar comes up, plus the
// abnormal state that names no task.
struct MenuBarPanelGalleryEntry {
    QString name;
    MenuBarPresentation presentation;
};
std::vector<MenuBarPanelGalleryEntry> menuBarPanelGalleryEntries(const DashboardStore &store);

// One panel as it shows, in the light or dark appearance.
QImage renderMenuBarPanel(const MenuBarPresentation &presentation, bool dark);
// Every entry as a row: light on the left, dark on the right, each on a
// desktop-like background of its appearance.
QImage renderMenuBarPanelGallery(const std::vector<MenuBarPanelGalleryEntry> &entries);

// The tray icon in every state at the sizes trays use, with dark and light
// ink, each on a white, a grey and a black panel: the icon must read on any
// panel whatever the application's palette says.
QImage renderMenuBarIconGallery();
