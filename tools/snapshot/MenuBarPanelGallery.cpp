#include "snapshot/MenuBarPanelGallery.h"

#include "dashboard/DashboardStore.h"
#include "presentation/kit/DashboardFonts.h"
#include "presentation/tray/KilnWardenMenuBarLabel.h"
#include "presentation/tray/KilnWardenMenuBarPanel.h"
#include "snapshot/DashboardSnapshot.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int kMargin = 24;
constexpr int kCaptionHeight = 22;

SystemMetricSample variant(const SystemMetricSample &base, SystemThermalState thermal,
                           double temperature)
{
    SystemMetricSample sample = base;
    sample.thermalState = thermal;
    sample.temperatureCelsius =
        SensorReading<double>::available(temperature, QStringLiteral("gallery"));
    return sample;
}

} // namespace

std::vector<MenuBarPanelGalleryEntry> menuBarPanelGalleryEntries(const DashboardStore &store)
{
    std::vector<MenuBarPanelGalleryEntry> entries;
    entries.push_back({QStringLiteral("collecting"), makePresentation(nullptr, {}, std::nullopt)});
    const std::optional<SystemMetricSample> &latest = store.latestSystemSample();
    if (!latest)
        return entries;
    const std::vector<DashboardTask> &tasks = store.allTasks();
    const TimePoint now = latest->timestamp;
    const SystemMetricSample observing = variant(*latest, SystemThermalState::unknown, 48.0);
    const SystemMetricSample normal = variant(*latest, SystemThermalState::nominal, 52.0);
    const SystemMetricSample high = variant(*latest, SystemThermalState::fair, 82.0);
    const SystemMetricSample action = variant(*latest, SystemThermalState::critical, 94.0);
    entries.push_back({QStringLiteral("observing"), makePresentation(&observing, tasks, {})});
    entries.push_back({QStringLiteral("normal"), makePresentation(&normal, tasks, {})});
    entries.push_back({QStringLiteral("highLoad"),
                       makePresentation(&high, tasks, TimePoint{now.secondsSince1970 - 400})});
    entries.push_back({QStringLiteral("actionRecommended"),
                       makePresentation(&action, tasks, TimePoint{now.secondsSince1970 - 20})});
    entries.push_back({QStringLiteral("actionRecommended, no task"),
                       makePresentation(&action, {}, TimePoint{now.secondsSince1970 - 20})});
    return entries;
}

QImage renderMenuBarPanel(const MenuBarPresentation &presentation, bool dark)
{
    KilnWardenMenuBarPanel panel;
    panel.setPresentation(presentation);
    panel.setDarkAppearance(dark);
    panel.resize(KilnWardenMenuBarPanel::panelWidth, panel.sizeHint().height());
    panel.show();
    settleEvents(20);
    const QImage image = panel.grab().toImage();
    panel.hide();
    return image;
}

QImage renderMenuBarPanelGallery(const std::vector<MenuBarPanelGalleryEntry> &entries)
{
    std::vector<std::pair<QImage, QImage>> panels;
    int rowHeight = 0;
    for (const MenuBarPanelGalleryEntry &entry : entries) {
        panels.emplace_back(renderMenuBarPanel(entry.presentation, false),
                            renderMenuBarPanel(entry.presentation, true));
        rowHeight =
            std::max({rowHeight, panels.back().first.height(), panels.back().second.height()});
    }
    const int columnWidth = KilnWardenMenuBarPanel::panelWidth + 2 * kMargin;
    const int rowStride = rowHeight + kCaptionHeight + kMargin;
    QImage gallery(2 * columnWidth, kMargin + static_cast<int>(entries.size()) * rowStride,
                   QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&gallery);
    painter.fillRect(QRect(0, 0, columnWidth, gallery.height()), QColor(0xE4, 0xE5, 0xE9));
    painter.fillRect(QRect(columnWidth, 0, columnWidth, gallery.height()),
                     QColor(0x16, 0x16, 0x18));
    painter.setFont(fixedDashboardFont(12, DashboardFontWeight::medium));
    for (size_t index = 0; index < entries.size(); ++index) {
        const int top = kMargin + static_cast<int>(index) * rowStride;
        for (int column = 0; column < 2; ++column) {
            const int left = column * columnWidth + kMargin;
            painter.setPen(column == 0 ? QColor(0x55, 0x5A, 0x63) : QColor(0xB0, 0xB4, 0xBC));
            painter.drawText(QRect(left, top, KilnWardenMenuBarPanel::panelWidth, kCaptionHeight),
                             Qt::AlignLeft | Qt::AlignTop,
                             entries[index].name + (column == 0 ? QStringLiteral(" · light")
                                                                : QStringLiteral(" · dark")));
            painter.drawImage(QPoint(left, top + kCaptionHeight),
                              column == 0 ? panels[index].first : panels[index].second);
        }
    }
    return gallery;
}

QImage renderMenuBarIconGallery()
{
    const MenuBarPresentationState states[] = {
        MenuBarPresentationState::collecting, MenuBarPresentationState::observing,
        MenuBarPresentationState::normal, MenuBarPresentationState::highLoad,
        MenuBarPresentationState::actionRecommended};
    const QColor panels[] = {QColor(0xFF, 0xFF, 0xFF), QColor(0x80, 0x80, 0x84),
                             QColor(0x00, 0x00, 0x00)};
    const QColor inks[] = {QColor(0x20, 0x20, 0x20), QColor(0xEE, 0xEE, 0xEE)};
    const int sizes[] = {16, 22, 24, 32};
    constexpr int cell = 40;
    const int columns = 3 * 2 * 4;
    QImage gallery(columns * cell, 5 * cell, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&gallery);
    int column = 0;
    for (const QColor &panel : panels) {
        for (const QColor &ink : inks) {
            for (const int size : sizes) {
                const QRect area(column * cell, 0, cell, gallery.height());
                painter.fillRect(area, panel);
                for (int row = 0; row < 5; ++row) {
                    const QImage icon = menuBarLabelImage(states[row], size, ink);
                    painter.drawImage(
                        QPoint(area.left() + (cell - size) / 2, row * cell + (cell - size) / 2),
                        icon);
                }
                ++column;
            }
        }
    }
    return gallery;
}
