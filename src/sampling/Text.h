#pragma once

#include <QLocale>
#include <QString>

// Every display text is a Simplified Chinese literal that is also its own
// translation key. Texts with placeholders use Qt's %1, %2 in place of the
// printf-style markers, and are filled with `arg` after the lookup.
QString kwText(const char *sourceText);

// A number in the user's current locale (QLocale()), with the locale's own
// grouping and exactly `fractionDigits` digits after the decimal mark.
QString formatLocaleNumber(double value, int fractionDigits);

// An integer in the user's current locale, with grouping.
QString formatLocaleInteger(long long value);
// The same in `locale`: a tick that formats many numbers makes its locale once.
QString formatLocaleInteger(long long value, const QLocale &locale);
