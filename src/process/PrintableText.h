#pragma once

#include <QString>

// `text` with every character that could forge what is shown replaced by
// "?": control characters (C0, DEL and C1, as ps shows them), the line and
// paragraph separators U+2028 and U+2029, and the format characters that
// change text direction (U+061C, U+200E, U+200F, U+202A–U+202E,
// U+2066–U+2069). Names, commands, projects and desktop entry names come from
// whoever started a process; a newline, an escape sequence or a reversed run
// in them must not forge a row, colour a terminal or turn a PID around in
// what is drawn, printed or read out. Every text of a process passes here on
// its way to the screen, the terminal or a screen reader; the JSON output
// keeps the original and escapes it instead.
QString printableText(QString text);

// Whether `character` is one that printableText replaces.
bool isForgingCharacter(QChar character);
