#pragma once

#include <QLocale>
#include <QString>

// The locale of the language the interface shows (Simplified Chinese, China,
// or English, United States), whatever LANG says: every date, time and number
// on screen is formatted in it, so an all-Chinese window never shows
// "23 Nov 2026". The time zone is not part of it and stays the user's.
QLocale interfaceLocale();

// A number in the interface's locale, with its own grouping and exactly `fractionDigits` digits
// after the decimal mark.
QString formatLocaleNumber(double value, int fractionDigits);

// An integer in the interface's locale, with grouping.
QString formatLocaleInteger(long long value);
// The same in `locale`: a tick that formats many numbers makes its locale once.
QString formatLocaleInteger(long long value, const QLocale &locale);
