#include "sampling/SensorReading.h"

#include "sampling/Text.h"

#include <QLocale>

QString sensorReadingCaseName(SensorReadingCase readingCase)
{
    switch (readingCase) {
    case SensorReadingCase::available:
        return QStringLiteral("available");
    case SensorReadingCase::unsupported:
        return QStringLiteral("unsupported");
    case SensorReadingCase::permissionDenied:
        return QStringLiteral("permissionDenied");
    case SensorReadingCase::temporarilyUnavailable:
        return QStringLiteral("temporarilyUnavailable");
    case SensorReadingCase::warmingUp:
        return QStringLiteral("warmingUp");
    }
    return {};
}

namespace sensor_reading_detail {

QString sourceWord(SensorReadingCase readingCase)
{
    switch (readingCase) {
    case SensorReadingCase::available:
        return {};
    case SensorReadingCase::unsupported:
        return kwText("不支持");
    case SensorReadingCase::permissionDenied:
        return kwText("权限受限");
    case SensorReadingCase::temporarilyUnavailable:
        return kwText("暂不可用");
    case SensorReadingCase::warmingUp:
        return kwText("采集中");
    }
    return {};
}

QString statusWord(SensorReadingCase readingCase)
{
    switch (readingCase) {
    case SensorReadingCase::available:
        return kwText("可用");
    case SensorReadingCase::unsupported:
    case SensorReadingCase::temporarilyUnavailable:
        return kwText("不可用");
    case SensorReadingCase::permissionDenied:
        return kwText("权限受限");
    case SensorReadingCase::warmingUp:
        return kwText("采集中");
    }
    return {};
}

QString displayNumber(double value, const QString &unit, int fractionDigits)
{
    return formatLocaleNumber(value, fractionDigits) + unit;
}

} // namespace sensor_reading_detail
