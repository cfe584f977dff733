#pragma once

#include "layers/FillPattern.h"
#include "layers/MapView.h"

#include <QColor>

#include <algorithm>
#include <vector>

class QPainter;

namespace tessaro {

/// Markers of points by the numbers that the map keeps.
enum class Marker { Circle, Square, Triangle, Cross };

/// How a feature is drawn. Sizes and widths are in pixels of the screen.
struct LayerSymbol {
    QColor color = Qt::lightGray;
    FillPattern pattern = FillPattern::Solid;
    QColor outline = Qt::black; ///< of polygons and markers
    double outlineWidth = 1;    ///< of polygons; 0 for none
    Qt::PenStyle lineStyle = Qt::SolidLine;
    double lineWidth = 1;
    Marker marker = Marker::Circle;
    double markerSize = 5;

    bool operator==(const LayerSymbol&) const = default;
};

/// The symbols of a layer, and which of them each feature has. Features without a number have the first symbol, those
/// with one below 0 are not drawn.
struct LayerSymbols {
    std::vector<LayerSymbol> symbols{LayerSymbol()};
    std::vector<int> ofFeature;

    /// The number of a feature's symbol; below 0 when it isn't drawn.
    [[nodiscard]] int NumberOf(std::size_t feature) const {
        if (symbols.empty()) return -1;
        const int symbol = feature < ofFeature.size() ? ofFeature[feature] : 0;
        return std::min(symbol, static_cast<int>(symbols.size()) - 1);
    }
};

/// Draws a layer on a picture that shows `view`: nothing but these arguments counts. `scale` makes pens, markers and
/// patterns larger, 1 being the screen. Features outside the view are left out; polygons
/// of less than three pixels become dots in the colour of their fill, so that islands stay. In a picture of pixels the
/// outlines lie over all fills of the layer, in one of lines over those of the features before.
void PaintLayer(QPainter& painter, const MapLayer& layer, const LayerSymbols& symbols, const MapView& view,
                double scale);

} // namespace tessaro
