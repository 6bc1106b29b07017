#include "process/PrintableText.h"

#include <algorithm>

bool isForgingCharacter(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        break;
    }
    const char16_t code = character.unicode();
    return code == 0x061C || code == 0x200E || code == 0x200F ||
           (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

QString printableText(QString text)
{
    // Most texts hold none: look before detaching a shared string.
    if (std::none_of(text.cbegin(), text.cend(), isForgingCharacter))
        return text;
    std::replace_if(text.begin(), text.end(), isForgingCharacter, QLatin1Char('?'));
    return text;
}
