#pragma once

#include "layers/LabelPlaces.h"
#include "layers/LayerPainter.h"
#include "layers/MapView.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <memory>
#include <vector>

class QPainter;

namespace tessaro {

class LabelLayouts;

/// The labels of a layer: what they show, the texts of its features, and how they look.
struct LayerLabels {
    bool on = true;                 ///< False: none is drawn, and all else is kept
    QString field;                  ///< key of what they show, such as "Comm_Area Name"; empty for none
    std::vector<QString> texts;     ///< one for each feature; none: the layer has no labels
    std::vector<LabelPlace> places; ///< of the features, see LabelPlaces
    QFont font;
    QColor color = Qt::black;
    QColor halo;           ///< a rim around the letters; invalid for none
    bool overlaps = false; ///< every label is drawn, even over another; otherwise those with more room come first
    std::shared_ptr<LabelLayouts> layouts; ///< kept from one drawing to the next; without them it takes longer
};

/// A rim in which letters of this colour stand out on any ground: white around dark ones, black around light ones.
[[nodiscard]] QColor HaloOf(const QColor& letters);

/// Labels to be drawn, and the markers of the features, above which they stand; nullptr where they stand on their
/// places.
struct LabelledLayer {
    const LayerLabels* labels = nullptr;
    const LayerSymbols* markers = nullptr;
};

/// Draws the labels of layers, from the lowest to the topmost, on a picture that shows `view`, with letters `scale`
/// times as large as on the screen. Labels that may not overlap give way to those of the layers above too.
void PaintLabels(QPainter& painter, const std::vector<LabelledLayer>& layers, const MapView& view, double scale);

} // namespace tessaro
