#pragma once

#include <QString>

// `text` with every control character (C0, DEL and C1, as Unicode classes
// them) shown as "?", as ps shows them. Names, projects and desktop entry
// names come from whoever started a process; a newline or an escape sequence
// in them must not forge a line or colour a terminal in what is printed.
QString withControlCharactersShown(QString text);
