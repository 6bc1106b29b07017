#include "sampling/SensorReading.h"

#include "sampling/EnumTable.h"

#include <QCoreApplication>

namespace {

// The translation context of this file's texts.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(SensorReading)
};

struct ReadingCaseWords {
    SensorReadingCase key;
    const char *name;       // the report's JSON value
    const char *sourceWord; // stands where a source would; empty when there is one
    const char *statusWord;
};

constexpr ReadingCaseWords kReadingCaseWords[] = {
    {SensorReadingCase::available, "available", "", QT_TRANSLATE_NOOP("SensorReading", "可用")},
    {SensorReadingCase::unsupported, "unsupported", QT_TRANSLATE_NOOP("SensorReading", "不支持"),
     QT_TRANSLATE_NOOP("SensorReading", "不可用")},
    {SensorReadingCase::permissionDenied, "permissionDenied",
     QT_TRANSLATE_NOOP("SensorReading", "权限受限"),
     QT_TRANSLATE_NOOP("SensorReading", "权限受限")},
    {SensorReadingCase::temporarilyUnavailable, "temporarilyUnavailable",
     QT_TRANSLATE_NOOP("SensorReading", "暂不可用"), QT_TRANSLATE_NOOP("SensorReading", "不可用")},
    {SensorReadingCase::warmingUp, "warmingUp", QT_TRANSLATE_NOOP("SensorReading", "采集中"),
     QT_TRANSLATE_NOOP("SensorReading", "采集中")},
};
static_assert(coversEnumeration(kReadingCaseWords, SensorReadingCase::warmingUp));

} // namespace

QString sensorReadingCaseName(SensorReadingCase readingCase)
{
    return QLatin1StringView(enumRow(kReadingCaseWords, readingCase).name);
}

namespace sensor_reading_detail {

QString sourceWord(SensorReadingCase readingCase)
{
    const char *word = enumRow(kReadingCaseWords, readingCase).sourceWord;
    return *word ? Words::tr(word) : QString();
}

QString statusWord(SensorReadingCase readingCase)
{
    return Words::tr(enumRow(kReadingCaseWords, readingCase).statusWord);
}

} // namespace sensor_reading_detail
