#include "sampling/Text.h"

#include "sampling/InterfaceLanguage.h"

#include <QLocale>

QLocale interfaceLocale()
{
    return localeOfInterfaceLanguage(currentInterfaceLanguage());
}

QString formatLocaleNumber(double value, int fractionDigits)
{
    return interfaceLocale().toString(value, 'f', fractionDigits < 0 ? 0 : fractionDigits);
}

QString formatLocaleInteger(long long value)
{
    return interfaceLocale().toString(value);
}

QString formatLocaleInteger(long long value, const QLocale &locale)
{
    return locale.toString(value);
}
