#pragma once

#include <QString>

// The window's width class. The limits belong to the upper class.
enum class DashboardHorizontalSize { compact, standard, spacious };

// Every layout number of the dashboard, derived from the window's content size
// alone. A plain value: views compare it and rebuild only when it changes.
// Lengths are device-independent pixels.
struct DashboardLayoutMetrics {
    DashboardHorizontalSize horizontalSize = DashboardHorizontalSize::spacious;
    bool isShort = false;
    double sidebarWidth = 240;
    // A Linux window has its own title bar above the content, so the header
    // leaves out the 28 px that a macOS title bar would overlap.
    double headerHeight = 88;
    double pageHorizontalPadding = 32;
    double contentSpacing = 24;
    double taskColumnWidth = 392;
    double eventColumnWidth = 764;
    double diagnosisChartHeight = 300;
    double hardwareChartHeight = 286;
    double typographyScale = 1.0;
    bool showsSidebarLabels = true;
    bool showsPrivacyLabel = true;

    bool operator==(const DashboardLayoutMetrics &) const = default;

    // The metrics of a window whose content is `width` by `height`. A default
    // constructed value is what a view outside any window sees: the spacious
    // class, not short, scale 1.
    static DashboardLayoutMetrics forSize(double width, double height);
};

// Below 960 the text stops shrinking; from 1440 on it is at full size.
double dashboardTypographyScale(double width);
// A font size times the scale, to the nearest half point (halves away from 0),
// so resizing the window does not change text on every pixel.
double dashboardScaledFontSize(double size, double typographyScale);
