#pragma once

#include "layers/LayerPainter.h"
#include "map/project/ProjectObjects.h"

namespace tessaro {

/// A filled area with a thin black outline, and its three colours.
void PutShading(ProjectObjects& objects, ObjectRef symbol, const QColor& color);
/// A line of the symbol's width, and its colour.
void PutStroke(ProjectObjects& objects, ObjectRef symbol, const LayerSymbol& look);
/// A marker out of a font, with its size, colours and the font.
void PutMarker(ProjectObjects& objects, ObjectRef symbol, const LayerSymbol& look);

} // namespace tessaro
