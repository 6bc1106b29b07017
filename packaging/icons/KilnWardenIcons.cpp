// kilnwarden-icons: a build step. Writes the application's icon theme files
// (hicolor: a scalable SVG and PNGs from 16 to 512 pixels), drawn from the
// mark's geometry, under the directory given.
//
//   kilnwarden-icons OUTPUT_DIRECTORY

#include "presentation/icons/ApplicationIcon.h"
#include "presentation/kit/KilnWardenMark.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <cstdio>

namespace {

// Writes <root>/hicolor/scalable/apps/<name>.svg and
// <root>/hicolor/<n>x<n>/apps/<name>.png for every size. Returns what went
// wrong, or an empty text.
QString writeApplicationIconTheme(const QString &root, const QString &name)
{
    const QDir theme(QDir(root).filePath(QStringLiteral("hicolor")));
    const QString scalableDirectory = theme.filePath(QStringLiteral("scalable/apps"));
    if (!QDir().mkpath(scalableDirectory))
        return QStringLiteral("cannot create %1").arg(scalableDirectory);
    QFile svg(QDir(scalableDirectory).filePath(name + QStringLiteral(".svg")));
    if (!svg.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        svg.write(kilnWardenApplicationIconSvg()) < 0 || !svg.flush())
        return QStringLiteral("cannot write %1").arg(svg.fileName());
    for (const int size : kApplicationIconPixelSizes) {
        const QString directory = theme.filePath(QStringLiteral("%1x%1/apps").arg(size));
        if (!QDir().mkpath(directory))
            return QStringLiteral("cannot create %1").arg(directory);
        const QString path = QDir(directory).filePath(name + QStringLiteral(".png"));
        if (!kilnWardenApplicationIconImage(size).save(path, "PNG"))
            return QStringLiteral("cannot write %1").arg(path);
    }
    return {};
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: kilnwarden-icons OUTPUT_DIRECTORY\n");
        return 2;
    }
    const QString error =
        writeApplicationIconTheme(QString::fromLocal8Bit(argv[1]), QStringLiteral("kilnwarden"));
    if (!error.isEmpty()) {
        std::fprintf(stderr, "kilnwarden-icons: %s\n", qPrintable(error));
        return 1;
    }
    return 0;
}
