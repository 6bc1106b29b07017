// kilnwarden-icons: a build step. Writes the application's icon theme files
// (hicolor: a scalable SVG and PNGs from 16 to 512 pixels), drawn from the
// mark's geometry, under the directory given.
//
//   kilnwarden-icons OUTPUT_DIRECTORY

#include "presentation/icons/ApplicationIconFiles.h"

#include <cstdio>

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
