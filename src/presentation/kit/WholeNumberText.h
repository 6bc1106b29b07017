#pragma once

#include <QString>

// Whole numbers for display: rounded to the nearest integer with halves away
// from zero. A value that is not finite reads as 0 and one beyond ±10^15 is
// held there, so a broken reading can never make the rounding undefined.
long long roundedWholeNumber(double value);

// The rounded value in plain decimal digits, without grouping: "42", "-5".
QString wholeNumberText(double value);
// The same followed directly by "%": "42%".
QString wholePercentText(double value);
