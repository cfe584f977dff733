#include "map/custom/LayerLooks.h"

#include "map/MapLayerList.h"

#include <algorithm>
#include <iterator>

namespace tessaro {

namespace {

constexpr int kMarkers = 4;
constexpr int kLines = 5;
constexpr int kFills = 11;
constexpr QRgb kFirstColors[] = {0xff1b6ca8, 0xffb3472b, 0xff2f7d4f, 0xff7a4fa3, 0xff8a6d1a, 0xff3b3b3b};

/// The symbol that stands for all of a layer.
const LayerSymbol& First(const StackedLayer& layer) {
    static const LayerSymbol none;
    return layer.symbols.symbols.empty() ? none : layer.symbols.symbols.front();
}

/// Changes all symbols of a layer, which may be one for each class.
template <class Change> void ChangeAll(StackedLayer& layer, Change change) {
    if (layer.symbols.symbols.empty()) layer.symbols.symbols.emplace_back();
    for (LayerSymbol& each : layer.symbols.symbols)
        change(each);
}

} // namespace

int StylesOf(LayerKind kind) {
    return kind == LayerKind::Point ? kMarkers : kind == LayerKind::Line ? kLines : kFills;
}

int StyleOf(const StackedLayer& layer) {
    const LayerSymbol& symbol = First(layer);
    if (layer.data.kind == LayerKind::Point) return static_cast<int>(symbol.marker);
    if (layer.data.kind == LayerKind::Line) return std::max(0, static_cast<int>(symbol.lineStyle) - Qt::SolidLine);
    return static_cast<int>(symbol.pattern);
}

void SetStyle(StackedLayer& layer, int style) {
    if (style < 0 || style >= StylesOf(layer.data.kind)) return;
    ChangeAll(layer, [&](LayerSymbol& symbol) {
        if (layer.data.kind == LayerKind::Point)
            symbol.marker = static_cast<Marker>(style);
        else if (layer.data.kind == LayerKind::Line)
            symbol.lineStyle = static_cast<Qt::PenStyle>(Qt::SolidLine + style);
        else
            symbol.pattern = PatternOfNumber(style);
    });
}

double LeastWidth(LayerKind kind) {
    return kind == LayerKind::Point ? 1 : kind == LayerKind::Line ? 0.5 : 0;
}

double MostWidth(LayerKind kind) {
    return kind == LayerKind::Point ? 250 : 20;
}

double WidthOf(const StackedLayer& layer) {
    const LayerSymbol& symbol = First(layer);
    if (layer.data.kind == LayerKind::Point) return symbol.markerSize;
    return layer.data.kind == LayerKind::Line ? symbol.lineWidth : symbol.outlineWidth;
}

void SetWidth(StackedLayer& layer, double width) {
    const LayerKind kind = layer.data.kind;
    const double allowed = std::clamp(width, LeastWidth(kind), MostWidth(kind));
    ChangeAll(layer, [&](LayerSymbol& symbol) {
        (kind == LayerKind::Point  ? symbol.markerSize
         : kind == LayerKind::Line ? symbol.lineWidth
                                   : symbol.outlineWidth) = allowed;
    });
}

QColor ColorOf(const StackedLayer& layer) {
    return First(layer).color;
}

void SetColor(StackedLayer& layer, const QColor& color) {
    ChangeAll(layer, [&](LayerSymbol& symbol) { symbol.color = color; });
}

QColor OutlineOf(const StackedLayer& layer) {
    return First(layer).outline;
}

void SetOutline(StackedLayer& layer, const QColor& color) {
    ChangeAll(layer, [&](LayerSymbol& symbol) { symbol.outline = color; });
}

bool MayStyle(const StackedLayer& layer) {
    return !IsOfTheme(layer) || layer.data.kind == LayerKind::Line;
}

bool MayColor(const StackedLayer& layer) {
    return !IsOfTheme(layer);
}

bool MayWiden(const StackedLayer& layer) {
    return !IsOfTheme(layer) || layer.data.kind != LayerKind::Point;
}

void KeepOutlines(LayerSymbols& symbols, const LayerSymbols& before) {
    if (before.symbols.empty()) return;
    const LayerSymbol& kept = before.symbols.front();
    for (LayerSymbol& each : symbols.symbols) {
        each.outline = kept.outline;
        each.outlineWidth = kept.outlineWidth;
        each.lineStyle = kept.lineStyle;
        each.lineWidth = kept.lineWidth;
    }
}

LayerSymbol FirstLook(int number, bool buffer) {
    LayerSymbol symbol;
    symbol.color = QColor::fromRgb(kFirstColors[static_cast<std::size_t>(number) % std::size(kFirstColors)]);
    symbol.outline = symbol.color;
    symbol.pattern = buffer ? FillPattern::UpwardDiagonal : FillPattern::Transparent;
    return symbol;
}

} // namespace tessaro
