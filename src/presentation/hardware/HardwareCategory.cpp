#include "presentation/hardware/HardwareCategory.h"

#include "presentation/kit/DashboardPalette.h"
#include "sampling/Text.h"

HardwareCategoryInfo hardwareCategoryInfo(HardwareCategory category)
{
    namespace P = DashboardPalette;
    switch (category) {
    case HardwareCategory::temperature:
        return {kwText("温度"),
                QStringLiteral("thermometer.medium"),
                P::brandOrange,
                QStringLiteral("hardware-tab-temperature"),
                kwText("当前芯片温度"),
                kwText("温度趋势 · 60 秒"),
                QStringLiteral("Linux hwmon")};
    case HardwareCategory::cpu:
        return {QStringLiteral("CPU"),
                QStringLiteral("cpu"),
                P::accent,
                QStringLiteral("hardware-tab-cpu"),
                kwText("当前 CPU 占用"),
                kwText("CPU 使用率 · 60 秒"),
                QStringLiteral("/proc/stat")};
    case HardwareCategory::gpu:
        return {QStringLiteral("GPU"),
                QStringLiteral("square.stack.3d.up"),
                P::chartPurple,
                QStringLiteral("hardware-tab-gpu"),
                kwText("当前 GPU 占用"),
                kwText("GPU 使用率 · 60 秒"),
                QStringLiteral("GPU sysfs / NVML")};
    case HardwareCategory::memory:
        return {kwText("内存"),
                QStringLiteral("memorychip"),
                P::success,
                QStringLiteral("hardware-tab-memory"),
                kwText("当前内存占用"),
                kwText("内存占用 · 60 秒"),
                QStringLiteral("/proc/meminfo")};
    case HardwareCategory::disk:
        return {kwText("磁盘"),
                QStringLiteral("internaldrive"),
                P::chartPurple,
                QStringLiteral("hardware-tab-disk"),
                kwText("当前磁盘活动"),
                kwText("磁盘活动 · 60 秒"),
                QStringLiteral("/proc/diskstats")};
    case HardwareCategory::fan:
        break;
    }
    return {kwText("风扇"),
            QStringLiteral("fan.fill"),
            P::chartBlue,
            QStringLiteral("hardware-tab-fan"),
            kwText("当前风扇转速"),
            kwText("风扇转速 · 60 秒"),
            QStringLiteral("Linux hwmon")};
}
