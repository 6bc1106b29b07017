#include "sampling/SystemThermalState.h"

#include "sampling/Text.h"

#include <array>

namespace {
constexpr std::array kAllStates = {SystemThermalState::nominal, SystemThermalState::fair,
                                   SystemThermalState::serious, SystemThermalState::critical,
                                   SystemThermalState::unknown};
}

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

std::optional<SystemThermalState> systemThermalStateFromRawText(const QString &text)
{
    for (SystemThermalState state : kAllStates) {
        if (systemThermalStateRawText(state) == text)
            return state;
    }
    return std::nullopt;
}

SystemThermalState systemThermalStateFromSystemValue(std::uint64_t value)
{
    return value < 4 ? kAllStates[value] : SystemThermalState::unknown;
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
