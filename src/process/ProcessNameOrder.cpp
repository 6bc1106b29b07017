#include "process/ProcessNameOrder.h"

#include <QLocale>

namespace {

// The value of a decimal digit in any script, -1 for anything else; ASCII
// without the Unicode table, as nearly every process name is ASCII.
int digitValueOf(QChar character)
{
    const char16_t code = character.unicode();
    if (code < 0x80)
        return code >= u'0' && code <= u'9' ? int(code - u'0') : -1;
    return character.digitValue();
}

bool isDigit(QChar character)
{
    return digitValueOf(character) >= 0;
}

// The run of digits or of non-digits that starts at `position`.
QStringView runAt(QStringView text, qsizetype position)
{
    const bool digits = isDigit(text[position]);
    qsizetype end = position + 1;
    while (end < text.size() && isDigit(text[end]) == digits)
        ++end;
    return text.sliced(position, end - position);
}

// Two digit runs by value, of any length: without leading zeros the longer
// run is the larger number, and runs of equal length compare digit by digit.
int compareDigitRuns(QStringView left, QStringView right)
{
    auto significant = [](QStringView run) {
        qsizetype first = 0;
        while (first + 1 < run.size() && digitValueOf(run[first]) == 0)
            ++first;
        return run.sliced(first);
    };
    const QStringView a = significant(left);
    const QStringView b = significant(right);
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    for (qsizetype index = 0; index < a.size(); ++index) {
        const int difference = digitValueOf(a[index]) - digitValueOf(b[index]);
        if (difference != 0)
            return difference < 0 ? -1 : 1;
    }
    return 0;
}

} // namespace

ProcessNameOrder::ProcessNameOrder() : ProcessNameOrder(QLocale()) {}

ProcessNameOrder::ProcessNameOrder(const QLocale &locale) : m_collator(locale)
{
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    m_collator.setNumericMode(false);
}

int ProcessNameOrder::compare(QStringView left, QStringView right) const
{
    qsizetype leftPosition = 0;
    qsizetype rightPosition = 0;
    while (leftPosition < left.size() && rightPosition < right.size()) {
        const QStringView leftRun = runAt(left, leftPosition);
        const QStringView rightRun = runAt(right, rightPosition);
        const bool leftDigits = isDigit(leftRun.front());
        const bool rightDigits = isDigit(rightRun.front());
        int order = 0;
        if (leftDigits && rightDigits)
            order = compareDigitRuns(leftRun, rightRun);
        else if (leftDigits != rightDigits)
            // A number sorts before text at the same place, as file browsers do.
            order = leftDigits ? -1 : 1;
        else
            order = m_collator.compare(leftRun, rightRun);
        if (order != 0)
            return order < 0 ? -1 : 1;
        leftPosition += leftRun.size();
        rightPosition += rightRun.size();
    }
    if (leftPosition < left.size() || rightPosition < right.size())
        return leftPosition < left.size() ? 1 : -1; // a prefix sorts first
    const int exact = left.compare(right);
    return exact < 0 ? -1 : (exact > 0 ? 1 : 0);
}

bool ProcessNameOrder::lessThan(const QString &leftName, int leftPID, const QString &rightName,
                                int rightPID) const
{
    // Equal names (fifty workers of one program) compare equal at once.
    const int order = leftName == rightName ? 0 : compare(leftName, rightName);
    if (order != 0)
        return order < 0;
    return leftPID < rightPID;
}
