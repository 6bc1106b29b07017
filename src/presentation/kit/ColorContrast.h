#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

// The contrast ratio of two opaque colours, from their relative luminance in
// sRGB: 1 for equal colours, 21 for black on white. Text wants 4.5 or more,
// a focus ring or another mark that must be seen 3 or more.
inline double contrastRatio(const QColor &first, const QColor &second)
{
    const auto luminance = [](const QColor &color) {
        const auto channel = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
               0.0722 * channel(color.blueF());
    };
    const double a = luminance(first);
    const double b = luminance(second);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}
