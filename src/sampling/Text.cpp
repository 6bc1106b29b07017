#include "sampling/Text.h"

#include <QCoreApplication>
#include <QLocale>

QString kwText(const char *sourceText)
{
    return QCoreApplication::translate("KilnWarden", sourceText);
}

QLocale interfaceLocale()
{
    // Made once: a copy is a reference count, where building a locale looks it
    // up under a global lock.
    static const QLocale locale(QLocale::Chinese, QLocale::SimplifiedChineseScript, QLocale::China);
    return locale;
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
