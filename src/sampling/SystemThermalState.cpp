#include "sampling/SystemThermalState.h"

#include "sampling/Text.h"

QString systemThermalStateRawText(SystemThermalState state)
{
    switch (state) {
    case SystemThermalState::nominal:
        return QStringLiteral("nominal");
    case SystemThermalState::fair:
        return QStringLiteral("fair");
    case SystemThermalState::serious:
        return QStringLiteral("serious");
    case SystemThermalState::critical:
        return QStringLiteral("critical");
    case SystemThermalState::unknown:
        return QStringLiteral("unknown");
    }
    return QStringLiteral("unknown");
}

QString systemThermalStateLabel(SystemThermalState state)
{
    switch (state) {
    case SystemThermalState::nominal:
        return kwText("正常");
    case SystemThermalState::fair:
        return kwText("尚可");
    case SystemThermalState::serious:
        return kwText("严重");
    case SystemThermalState::critical:
        return kwText("临界");
    case SystemThermalState::unknown:
        return kwText("未知");
    }
    return kwText("未知");
}
