#pragma once

// Readable gtest output for Qt values; force-included into every test file.
#include <QString>

#include <ostream>

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
