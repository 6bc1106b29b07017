#include "sampling/Text.h"

#include <QCoreApplication>
#include <QLocale>

QString kwText(const char *sourceText)
{
    return QCoreApplication::translate("KilnWarden", sourceText);
}

QString formatLocaleNumber(double value, int fractionDigits)
{
    QLocale locale;
    // Grouping follows the locale: the C locale omits it by default, real locales use it.
    return locale.toString(value, 'f', fractionDigits < 0 ? 0 : fractionDigits);
}

QString formatLocaleInteger(long long value)
{
    return QLocale().toString(value);
}

QString formatLocaleInteger(long long value, const QLocale &locale)
{
    return locale.toString(value);
}
