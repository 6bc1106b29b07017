#include "sampling/SystemThermalState.h"

#include "sampling/EnumTable.h"
#include "sampling/Text.h"

namespace {

struct ThermalStateWords {
    SystemThermalState key;
    const char *rawText; // the stored form and the report's JSON value
    const char *label;
};

constexpr ThermalStateWords kThermalStateWords[] = {
    {SystemThermalState::nominal, "nominal", "正常"},
    {SystemThermalState::fair, "fair", "尚可"},
    {SystemThermalState::serious, "serious", "严重"},
    {SystemThermalState::critical, "critical", "临界"},
    {SystemThermalState::unknown, "unknown", "未知"},
};
static_assert(coversEnumeration(kThermalStateWords, SystemThermalState::unknown));

} // namespace

QString systemThermalStateRawText(SystemThermalState state)
{
    return QLatin1StringView(enumRow(kThermalStateWords, state).rawText);
}

QString systemThermalStateLabel(SystemThermalState state)
{
    return kwText(enumRow(kThermalStateWords, state).label);
}
