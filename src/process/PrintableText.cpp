#include "process/PrintableText.h"

#include <algorithm>

QString withControlCharactersShown(QString text)
{
    // Most texts hold none: look before detaching a shared string.
    const auto isControl = [](QChar character) {
        return character.category() == QChar::Other_Control;
    };
    if (std::none_of(text.cbegin(), text.cend(), isControl))
        return text;
    std::replace_if(text.begin(), text.end(), isControl, QLatin1Char('?'));
    return text;
}
