#pragma once

#include <QCollator>
#include <QString>

// The order in which process trees list siblings: names compared as a file
// browser does ("a2" before "a10", case-insensitive, in the user's locale),
// and equal names by pid.
//
// Digit runs are compared by value here rather than by QCollator's numeric
// mode: that mode depends on the collation backend and is ignored outright in
// the C locale, which would put "a10" before "a2" there. The runs between the
// digits go through the locale's collator. Where the whole comparison finds no
// difference (names that differ only in case, or in leading zeros) the names'
// code points decide, so the order is total and the same on every tick.
class ProcessNameOrder {
public:
    ProcessNameOrder(); // the user's current locale
    explicit ProcessNameOrder(const QLocale &locale);

    // Negative, zero or positive, as `left` sorts before, with or after `right`.
    int compare(QStringView left, QStringView right) const;
    // Name first, then pid for names that are exactly equal.
    bool lessThan(const QString &leftName, int leftPID, const QString &rightName,
                  int rightPID) const;

private:
    QCollator m_collator;
};
