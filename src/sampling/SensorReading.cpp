#include "sampling/SensorReading.h"

#include "sampling/EnumTable.h"
#include "sampling/Text.h"

namespace {

struct ReadingCaseWords {
    SensorReadingCase key;
    const char *name;       // the report's JSON value
    const char *sourceWord; // stands where a source would; empty when there is one
    const char *statusWord;
};

constexpr ReadingCaseWords kReadingCaseWords[] = {
    {SensorReadingCase::available, "available", "", "可用"},
    {SensorReadingCase::unsupported, "unsupported", "不支持", "不可用"},
    {SensorReadingCase::permissionDenied, "permissionDenied", "权限受限", "权限受限"},
    {SensorReadingCase::temporarilyUnavailable, "temporarilyUnavailable", "暂不可用", "不可用"},
    {SensorReadingCase::warmingUp, "warmingUp", "采集中", "采集中"},
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
    return *word ? kwText(word) : QString();
}

QString statusWord(SensorReadingCase readingCase)
{
    return kwText(enumRow(kReadingCaseWords, readingCase).statusWord);
}

} // namespace sensor_reading_detail
