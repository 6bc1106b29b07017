#include "support/FixtureProcRoot.h"

#include "support/Fixtures.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <unistd.h>

FixtureProcRoot::FixtureProcRoot(const QString &fixture)
{
    const QString source = fixturePath(fixture);
    QDirIterator it(source, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    m_ok = it.hasNext();
    while (it.hasNext()) {
        const QString file = it.next();
        const QString relative = QDir(source).relativeFilePath(file);
        const QString target = m_directory.filePath(relative);
        QDir().mkpath(QFileInfo(target).path());
        if (relative.endsWith(QStringLiteral(".link"))) {
            QFile link(file);
            m_ok = m_ok && link.open(QIODevice::ReadOnly);
            const QByteArray linkTarget = link.readAll();
            const QByteArray linkPath = target.chopped(5).toLocal8Bit();
            m_ok = m_ok && ::symlink(linkTarget.constData(), linkPath.constData()) == 0;
        } else {
            m_ok = m_ok && QFile::copy(file, target);
        }
    }
}
