#include "sampling/SystemThermalState.h"

#include "sampling/EnumTable.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(SystemThermalState)
};

struct ThermalStateWords {
    SystemThermalState key;
    const char *rawText; // the stored form and the report's JSON value
    const char *label;
};

constexpr ThermalStateWords kThermalStateWords[] = {
    {SystemThermalState::nominal, "nominal", QT_TRANSLATE_NOOP("SystemThermalState", "正常")},
    {SystemThermalState::fair, "fair", QT_TRANSLATE_NOOP("SystemThermalState", "尚可")},
    {SystemThermalState::serious, "serious", QT_TRANSLATE_NOOP("SystemThermalState", "严重")},
    {SystemThermalState::critical, "critical", QT_TRANSLATE_NOOP("SystemThermalState", "临界")},
    {SystemThermalState::unknown, "unknown", QT_TRANSLATE_NOOP("SystemThermalState", "未知")},
};
static_assert(coversEnumeration(kThermalStateWords, SystemThermalState::unknown));

} // namespace

QString systemThermalStateRawText(SystemThermalState state)
{
    return QLatin1StringView(enumRow(kThermalStateWords, state).rawText);
}

QString systemThermalStateLabel(SystemThermalState state)
{
    return Words::tr(enumRow(kThermalStateWords, state).label);
}
