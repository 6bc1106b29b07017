#include "presentation/hardware/HardwareCategory.h"

#include "presentation/kit/DashboardPalette.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(HardwareCategory)
};

} // namespace

HardwareCategoryInfo hardwareCategoryInfo(HardwareCategory category)
{
    namespace P = DashboardPalette;
    switch (category) {
    case HardwareCategory::temperature:
        return {Words::tr("温度"),
                QStringLiteral("thermometer.medium"),
                P::brandOrange,
                QStringLiteral("hardware-tab-temperature"),
                Words::tr("当前芯片温度"),
                Words::tr("温度趋势 · 60 秒"),
                QStringLiteral("Linux hwmon")};
    case HardwareCategory::cpu:
        return {QStringLiteral("CPU"),
                QStringLiteral("cpu"),
                P::accent,
                QStringLiteral("hardware-tab-cpu"),
                Words::tr("当前 CPU 占用"),
                Words::tr("CPU 使用率 · 60 秒"),
                QStringLiteral("/proc/stat")};
    case HardwareCategory::gpu:
        return {QStringLiteral("GPU"),
                QStringLiteral("square.stack.3d.up"),
                P::chartPurple,
                QStringLiteral("hardware-tab-gpu"),
                Words::tr("当前 GPU 占用"),
                Words::tr("GPU 使用率 · 60 秒"),
                QStringLiteral("GPU sysfs / NVML")};
    case HardwareCategory::memory:
        return {Words::tr("内存"),
                QStringLiteral("memorychip"),
                P::success,
                QStringLiteral("hardware-tab-memory"),
                Words::tr("当前内存占用"),
                Words::tr("内存占用 · 60 秒"),
                QStringLiteral("/proc/meminfo")};
    case HardwareCategory::disk:
        return {Words::tr("磁盘"),
                QStringLiteral("internaldrive"),
                P::chartPurple,
                QStringLiteral("hardware-tab-disk"),
                Words::tr("当前磁盘活动"),
                Words::tr("磁盘活动 · 60 秒"),
                QStringLiteral("/proc/diskstats")};
    case HardwareCategory::fan:
        break;
    }
    return {Words::tr("风扇"),
            QStringLiteral("fan.fill"),
            P::chartBlue,
            QStringLiteral("hardware-tab-fan"),
            Words::tr("当前风扇转速"),
            Words::tr("风扇转速 · 60 秒"),
            QStringLiteral("Linux hwmon")};
}
