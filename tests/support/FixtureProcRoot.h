#pragma once

#include <QString>
#include <QTemporaryDir>

// A copy of a fixture tree (tests/fixtures/<fixture>) in a temporary
// directory, where every "<name>.link" file becomes the symbolic link <name>
// to the text it holds: exe and cwd are links, and links are not kept in the
// repository.
class FixtureProcRoot {
public:
    explicit FixtureProcRoot(const QString &fixture);

    bool isReady() const { return m_ok && m_directory.isValid(); }
    QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
    bool m_ok = true;
};
