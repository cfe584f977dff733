#pragma once

#include "layers/LabelPlaces.h"
#include "layers/MapView.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <vector>

class QPainter;

namespace tessaro {

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
};

/// Draws the labels of a layer on a picture that shows `view`, with letters `scale` times as large as on the screen.
void PaintLabels(QPainter& painter, const LayerLabels& labels, const MapView& view, double scale);

} // namespace tessaro
