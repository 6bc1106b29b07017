// The icon theme files written at build time: an SVG that says what the
// program paints, and PNGs at every size.

#include "presentation/icons/ApplicationIconFiles.h"
#include "presentation/kit/DashboardPalette.h"
#include "presentation/kit/KilnWardenMark.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

struct SvgElement {
    QString name;
    QXmlStreamAttributes attributes;
};

std::vector<SvgElement> parse(const QByteArray &document)
{
    std::vector<SvgElement> elements;
    QXmlStreamReader reader(document);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            elements.push_back({reader.name().toString(), reader.attributes()});
    }
    EXPECT_FALSE(reader.hasError()) << qPrintable(reader.errorString());
    return elements;
}

TEST(ApplicationIconFiles, svgDrawsTheTileAndTheFullColourMark)
{
    const std::vector<SvgElement> elements = parse(kilnWardenApplicationIconSvg());
    ASSERT_FALSE(elements.empty());
    EXPECT_EQ(elements.front().name, QStringLiteral("svg"));
    EXPECT_EQ(elements.front().attributes.value(QStringLiteral("viewBox")),
              QStringLiteral("0 0 100 100"));

    std::vector<SvgElement> paths, rects;
    for (const SvgElement &element : elements) {
        if (element.name == QStringLiteral("path"))
            paths.push_back(element);
        if (element.name == QStringLiteral("rect"))
            rects.push_back(element);
    }
    // Brackets and three pulse segments; the tile and five bars.
    ASSERT_EQ(paths.size(), 4u);
    ASSERT_EQ(rects.size(), 6u);

    // The brackets in ink, the pulse in the accent with its peak in the heat colour.
    using namespace DashboardPalette;
    const std::pair<const char *, QRgb> strokes[] = {
        {"M 24 10 L 15 10 C 12 10 10 12 10 15 L 10 25 M 76 10", brandInk},
        {"M 15 57 C 21 57 21 52 26 52", accent},
        {"M 54 57 C 59 57 59 31 65 31", brandOrange},
        {"M 77 55 C 81 55 82 46 86 46", accent},
    };
    for (size_t index = 0; index < paths.size(); ++index) {
        SCOPED_TRACE(index);
        const QXmlStreamAttributes &path = paths[index].attributes;
        EXPECT_TRUE(
            path.value(QStringLiteral("d")).startsWith(QLatin1String(strokes[index].first)));
        EXPECT_EQ(path.value(QStringLiteral("stroke")),
                  QColor::fromRgb(strokes[index].second).name());
        EXPECT_EQ(path.value(QStringLiteral("stroke-width")),
                  QLatin1String(index == 0 ? "7" : "6"));
        EXPECT_EQ(path.value(QStringLiteral("stroke-linecap")), QStringLiteral("round"));
        EXPECT_EQ(path.value(QStringLiteral("fill")), QStringLiteral("none"));
    }
    // Four brackets: four moves in one path.
    EXPECT_EQ(paths[0].attributes.value(QStringLiteral("d")).count(QLatin1Char('M')), 4);

    EXPECT_EQ(rects[0].attributes.value(QStringLiteral("fill")), QStringLiteral("#ffffff"));
    EXPECT_EQ(rects[0].attributes.value(QStringLiteral("rx")), QStringLiteral("22"));
    for (int bar = 0; bar < 5; ++bar) {
        SCOPED_TRACE(bar);
        const QXmlStreamAttributes &rect = rects[1 + bar].attributes;
        const QRectF expected = KilnWardenMarkGeometry::loadBar(bar);
        EXPECT_EQ(rect.value(QStringLiteral("x")).toDouble(), expected.x());
        EXPECT_EQ(rect.value(QStringLiteral("height")).toDouble(), expected.height());
        EXPECT_EQ(rect.value(QStringLiteral("rx")).toDouble(), expected.width() / 2);
        // The fourth bar is the only one in the heat colour.
        EXPECT_EQ(rect.value(QStringLiteral("fill")),
                  QColor::fromRgb(bar == 3 ? brandOrange : accent).name());
    }
}

TEST(ApplicationIconFiles, themeHoldsTheSvgAndEveryPixelSize)
{
    QTemporaryDir root;
    ASSERT_TRUE(root.isValid());
    EXPECT_EQ(writeApplicationIconTheme(root.path(), QStringLiteral("kilnwarden")), QString());
    const QDir theme(root.filePath(QStringLiteral("hicolor")));
    EXPECT_TRUE(theme.exists(QStringLiteral("scalable/apps/kilnwarden.svg")));
    ASSERT_EQ(kApplicationIconPixelSizes.front(), 16);
    ASSERT_EQ(kApplicationIconPixelSizes.back(), 512);
    for (const int size : kApplicationIconPixelSizes) {
        SCOPED_TRACE(size);
        const QImage written(theme.filePath(QStringLiteral("%1x%1/apps/kilnwarden.png").arg(size)));
        ASSERT_EQ(written.size(), QSize(size, size));
        // The very pixels the program shows as its window icon.
        EXPECT_EQ(written.convertToFormat(QImage::Format_ARGB32),
                  kilnWardenApplicationIconImage(size).convertToFormat(QImage::Format_ARGB32));
    }
    // A root that cannot be created is reported, not ignored.
    EXPECT_FALSE(writeApplicationIconTheme(QStringLiteral("/proc/kilnwarden-icons"),
                                           QStringLiteral("kilnwarden"))
                     .isEmpty());
}

} // namespace
