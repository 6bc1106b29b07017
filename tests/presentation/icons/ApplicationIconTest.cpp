// The icon theme drawn at build time: an SVG that says what the program
// paints, and PNGs at every size, as the build tool writes them.

#include "presentation/icons/ApplicationIcon.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/KilnWardenMark.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

// The attributes of each element of `tag`, in document order.
std::vector<QXmlStreamAttributes> elementsOf(const QByteArray &document, const QString &tag)
{
    std::vector<QXmlStreamAttributes> elements;
    QXmlStreamReader reader(document);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == tag)
            elements.push_back(reader.attributes());
    }
    EXPECT_FALSE(reader.hasError()) << qPrintable(reader.errorString());
    return elements;
}

TEST(ApplicationIcon, svgDrawsTheTileAndTheFullColourMark)
{
    const QByteArray svg = kilnWardenApplicationIconSvg();
    const auto roots = elementsOf(svg, QStringLiteral("svg"));
    ASSERT_EQ(roots.size(), 1u);
    EXPECT_EQ(roots[0].value(QStringLiteral("viewBox")), QStringLiteral("0 0 100 100"));
    // Brackets and three pulse segments; the tile and five bars.
    const auto paths = elementsOf(svg, QStringLiteral("path"));
    const auto rects = elementsOf(svg, QStringLiteral("rect"));
    ASSERT_EQ(paths.size(), 4u);
    ASSERT_EQ(rects.size(), 6u);
    const auto at = [](const QXmlStreamAttributes &element, const char *name) {
        return element.value(QLatin1String(name)).toString();
    };

    // The brackets in ink, the pulse in the accent with its peak in the heat colour.
    using namespace DashboardPalette;
    const std::tuple<const char *, QRgb, const char *> strokes[] = {
        {"M 24 10 L 15 10 C 12 10 10 12 10 15 L 10 25 M 76 10", brandInk, "7"},
        {"M 15 57 C 21 57 21 52 26 52", accent, "6"},
        {"M 54 57 C 59 57 59 31 65 31", brandOrange, "6"},
        {"M 77 55 C 81 55 82 46 86 46", accent, "6"},
    };
    for (size_t index = 0; index < paths.size(); ++index) {
        SCOPED_TRACE(index);
        const auto &[start, stroke, width] = strokes[index];
        EXPECT_TRUE(at(paths[index], "d").startsWith(QLatin1String(start)));
        EXPECT_EQ(at(paths[index], "stroke"), QColor::fromRgb(stroke).name());
        EXPECT_EQ(at(paths[index], "stroke-width"), QLatin1String(width));
        EXPECT_EQ(at(paths[index], "stroke-linecap"), QStringLiteral("round"));
        EXPECT_EQ(at(paths[index], "fill"), QStringLiteral("none"));
    }
    // Four brackets: four moves in one path.
    EXPECT_EQ(at(paths[0], "d").count(QLatin1Char('M')), 4);

    EXPECT_EQ(at(rects[0], "fill"), QStringLiteral("#ffffff"));
    EXPECT_EQ(at(rects[0], "rx"), QStringLiteral("22"));
    for (int bar = 0; bar < 5; ++bar) {
        SCOPED_TRACE(bar);
        const QXmlStreamAttributes &rect = rects[1 + bar];
        const QRectF expected = KilnWardenMarkGeometry::loadBar(bar);
        EXPECT_EQ(at(rect, "x").toDouble(), expected.x());
        EXPECT_EQ(at(rect, "height").toDouble(), expected.height());
        EXPECT_EQ(at(rect, "rx").toDouble(), expected.width() / 2);
        // The fourth bar is the only one in the heat colour.
        EXPECT_EQ(at(rect, "fill"), QColor::fromRgb(bar == 3 ? brandOrange : accent).name());
    }
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
    ASSERT_TRUE(root.isValid());
    EXPECT_EQ(runTool(root.path()), 0);
    const QDir theme(root.filePath(QStringLiteral("hicolor")));
    EXPECT_TRUE(theme.exists(QStringLiteral("scalable/apps/kilnwarden.svg")));
    ASSERT_EQ(kApplicationIconPixelSizes.front(), 16);
    ASSERT_EQ(kApplicationIconPixelSizes.back(), 512);
    for (const int size : kApplicationIconPixelSizes) {
        SCOPED_TRACE(size);
        const QImage written(theme.filePath(QStringLiteral("%1x%1/apps/kilnwarden.png").arg(size)));
        ASSERT_EQ(written.size(), QSize(size, size));
        EXPECT_EQ(written.pixelColor(size / 2, size / 2).alpha(), 255); // the tile, not nothing
        // The very pixels the program shows as its window icon.
        EXPECT_EQ(written.convertToFormat(QImage::Format_ARGB32),
                  kilnWardenApplicationIconImage(size).convertToFormat(QImage::Format_ARGB32));
    }
    // A root that cannot be created is reported, not ignored.
    EXPECT_EQ(runTool(QStringLiteral("/proc/kilnwarden-icons")), 1);
#endif
}

} // namespace
