// What the window's icons cost: building a glyph's outline happens once per
// name and line width; every repaint after that only fills the cached outline.

#include "presentation/kit/SystemSymbolGlyphs.h"
#include "presentation/kit/SystemSymbols.h"

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

// Building every glyph's outline from its drawing, as the first paint does.
void BM_BuildEverySymbolOutline(benchmark::State &state)
{
    for (auto _ : state) {
        for (const SymbolGlyphEntry &entry : symbolGlyphTable()) {
            SymbolGlyphBuilder builder(1.7);
            entry.draw(builder);
            benchmark::DoNotOptimize(builder.result());
        }
    }
    state.counters["glyphs"] = double(symbolGlyphTable().size());
}
BENCHMARK(BM_BuildEverySymbolOutline)->Unit(benchmark::kMillisecond);

// Painting every glyph once at `size` pixels with the outlines cached, as a
// repaint of the window does.
void BM_PaintEverySymbol(benchmark::State &state)
{
    const int size = int(state.range(0));
    const QStringList names = systemSymbolNames();
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    for (auto _ : state) {
        for (const QString &name : names)
            paintSystemSymbol(painter, name, QRectF(0, 0, size, size), Qt::black);
    }
    state.counters["glyphs"] = double(names.size());
}
BENCHMARK(BM_PaintEverySymbol)->Arg(16)->Arg(48)->Unit(benchmark::kMicrosecond);

} // namespace
