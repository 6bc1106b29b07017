// The mark as the program paints it and as the icon theme holds it: the SVG
// drawn from the same geometry, and PNGs of the very pixels the window shows.

#include "presentation/icons/ApplicationIcon.h"
#include "presentation/kit/KilnWardenMark.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(ApplicationIcon, svgIsWellFormedWithTheTileAndTheMarksBars)
{
    QXmlStreamReader reader(kilnWardenApplicationIconSvg());
    std::vector<QRectF> rects;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement || reader.name() != "rect"_L1)
            continue;
        const auto at = [&](const char *key) {
            return reader.attributes().value(QLatin1String(key)).toDouble();
        };
        rects.emplace_back(at("x"), at("y"), at("width"), at("height"));
    }
    ASSERT_FALSE(reader.hasError()) << qPrintable(reader.errorString());
    ASSERT_EQ(rects.size(), 6u); // the tile and five bars
    for (int bar = 0; bar < 5; ++bar)
        EXPECT_EQ(rects[1 + bar], KilnWardenMarkGeometry::loadBar(bar)) << bar;
}

TEST(ApplicationIcon, themeHoldsTheSvgAndEveryPixelSize)
{
#ifndef KW_ICONS_BINARY
    GTEST_SKIP() << "the icon tool is built with packaging only";
#else
    // The tool's exit status for an output directory.
    auto runTool = [](const QString &directory) {
        QProcess tool;
        tool.start(QStringLiteral(KW_ICONS_BINARY), {directory});
        return tool.waitForFinished(60000) && tool.exitStatus() == QProcess::NormalExit
                   ? tool.exitCode()
                   : -1;
    };
    QTemporaryDir root;
    ASSERT_EQ(runTool(root.path()), 0);
    const QDir theme(root.filePath(QStringLiteral("hicolor")));
    EXPECT_TRUE(theme.exists(QStringLiteral("scalable/apps/kilnwarden.svg")));
    for (const int size : kApplicationIconPixelSizes) {
        SCOPED_TRACE(size);
        const QImage written(theme.filePath(QStringLiteral("%1x%1/apps/kilnwarden.png").arg(size)));
        ASSERT_EQ(written.size(), QSize(size, size));
        // The very pixels the program shows as its window icon.
        EXPECT_EQ(written.convertToFormat(QImage::Format_ARGB32),
                  kilnWardenApplicationIconImage(size).convertToFormat(QImage::Format_ARGB32));
    }
    // A root that cannot be created is reported, not ignored.
    EXPECT_EQ(runTool(QStringLiteral("/proc/kilnwarden-icons")), 1);
#endif
}

} // namespace
