#include "presentation/kit/SystemSymbols.h"
#include "dashboard/MenuBarPresentation.h"
#include "presentation/shell/DashboardSection.h"
#include "snapshot/ScriptedStore.h"

#include <QImage>
#include <QPainter>
#include <QSet>

#include <limits>

#include <gtest/gtest.h>

namespace {

// Every glyph is drawn into a box inset by this much from the image's edge,
// so ink that leaves the box can be seen.
constexpr int margin = 4;

// `name` painted into `box` of a transparent canvas `side` pixels square.
QImage paintOn(int side, const QString &name, const QRectF &box, const QColor &color = Qt::black,
               SymbolWeight weight = SymbolWeight::regular)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintSystemSymbol(painter, name, box, color, weight);
    return image;
}

QImage render(const QString &name, int size, SymbolWeight weight = SymbolWeight::regular)
{
    return paintOn(size + 2 * margin, name, QRectF(margin, margin, size, size), Qt::black, weight);
}

struct Ink {
    qint64 inside = 0; // summed alpha within the box
    qint64 outside = 0;
};

Ink inkOf(const QImage &image, int inset = margin)
{
    Ink ink;
    const QRect box = image.rect().adjusted(inset, inset, -inset, -inset);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(image.pixel(x, y));
            (box.contains(x, y) ? ink.inside : ink.outside) += alpha;
        }
    }
    return ink;
}

// Every glyph, the placeholder of an unknown name included, stays inside its
// box at every weight and differs from every other.
TEST(SystemSymbols, everyNameDrawsItsOwnGlyphInsideItsBox)
{
    const QString unknown = QStringLiteral("no.such.symbol");
    EXPECT_FALSE(hasSystemSymbol(unknown));
    const QStringList names = systemSymbolNames() << unknown;
    EXPECT_EQ(QSet<QString>(names.begin(), names.end()).size(), names.size());
    std::vector<QImage> images;
    for (const QString &name : names) {
        SCOPED_TRACE(qPrintable(name));
        for (const int size : {16, 48}) {
            for (const SymbolWeight weight : {SymbolWeight::regular, SymbolWeight::bold}) {
                const Ink ink = inkOf(render(name, size, weight));
                // At least a twentieth of the box, as a thin glyph covers.
                EXPECT_GT(ink.inside, 255LL * size * size / 20) << size;
                EXPECT_EQ(ink.outside, 0) << size;
            }
        }
        images.push_back(render(name, 48));
        for (std::size_t other = 0; other + 1 < images.size(); ++other)
            EXPECT_NE(images[other], images.back()) << qPrintable(names[int(other)]);
    }
}

TEST(SystemSymbols, absurdBoxesDrawNothingAndTranslucentInkLandsOnce)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const QRectF &box : {QRectF(0, 0, 0, 16), QRectF(0, 0, -8, 8), QRectF(0, 0, nan, 8),
                              QRectF(nan, 0, 8, 8), QRectF(0, 0, infinity, infinity)})
        EXPECT_EQ(inkOf(paintOn(16, QStringLiteral("cpu"), box), 0).inside, 0);
    for (const double size : {nan, -4.0, 0.0, 1e9}) {
        const QPixmap pixmap = systemSymbolPixmap(QStringLiteral("cpu"), size, Qt::black);
        EXPECT_EQ(pixmap.size(), QSize(1, 1));
        EXPECT_EQ(inkOf(pixmap.toImage(), 0).inside, 0);
    }
    // A translucent colour must not darken where strokes meet: the glyph is one
    // outline, filled once.
    const QImage image =
        paintOn(48, QStringLiteral("network"), QRectF(0, 0, 48, 48), QColor(0, 0, 0, 100));
    int maximum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            maximum = std::max(maximum, qAlpha(image.pixel(x, y)));
    }
    EXPECT_EQ(maximum, 100);
}

// What the store and every menu bar state hand the views must name a drawn
// glyph, not the placeholder.
TEST(SystemSymbols, everyNameTheStoreUsesIsDrawn)
{
    ScriptedStore scripted;
    EmptyScriptedStore empty;
    QStringList used;
    for (DashboardStore *store : {&scripted.store(), &empty.store()}) {
        for (const DashboardSensorStatus &status : store->sensorStatuses())
            used << status.symbolName;
        for (const DashboardTask &task : store->allTasks())
            used << task.symbolName;
    }
    using S = MenuBarPresentationState;
    for (const S state :
         {S::collecting, S::observing, S::normal, S::highLoad, S::actionRecommended})
        used << QString::fromLatin1(menuBarStateInfo(state).symbolName);
    for (const DashboardSection section : kAllDashboardSections)
        used << dashboardSectionSymbol(section);
    EXPECT_GT(used.size(), 18);
    for (const QString &name : used)
        EXPECT_TRUE(hasSystemSymbol(name)) << qPrintable(name);
}

} // namespace
