#pragma once

#include <QRgb>
#include <QString>

#include <array>

// The six things the hardware page can show, in the order of its tabs.
enum class HardwareCategory { temperature, cpu, gpu, memory, disk, fan };

inline constexpr std::array kAllHardwareCategories = {
    HardwareCategory::temperature, HardwareCategory::cpu,  HardwareCategory::gpu,
    HardwareCategory::memory,      HardwareCategory::disk, HardwareCategory::fan};

// Everything fixed about a category: its tab, its colour and its words.
struct HardwareCategoryInfo {
    QString title;         // also the category's text form: "温度", "CPU", ...
    QString symbolName;    // "thermometer.medium", ...
    QRgb tone = 0;         // the colour of its tile, chart and mark
    QString tabIdentifier; // "hardware-tab-temperature", ...
    QString currentLabel;  // "当前芯片温度", ...
    QString chartTitle;    // "温度趋势 · 60 秒", ...
    // Where this kind of figure comes from on Linux, as a fixed label (not
    // the reading's own source).
    QString sourceLabel;

    bool operator==(const HardwareCategoryInfo &) const = default;
};

HardwareCategoryInfo hardwareCategoryInfo(HardwareCategory category);
