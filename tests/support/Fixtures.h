#pragma once

#include <QString>

// Absolute path of a fixture below tests/fixtures/.
inline QString fixturePath(const QString &relative)
{
    return QStringLiteral(KW_FIXTURES_DIR "/") + relative;
}
