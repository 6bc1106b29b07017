#include "presentation/kit/WholeNumberText.h"

#include <algorithm>
#include <cmath>

long long roundedWholeNumber(double value)
{
    if (!std::isfinite(value))
        return 0;
    return std::llround(std::clamp(value, -1e15, 1e15));
}

QString wholeNumberText(double value)
{
    return QString::number(roundedWholeNumber(value));
}

QString wholePercentText(double value)
{
    return wholeNumberText(value) + QLatin1Char('%');
}
