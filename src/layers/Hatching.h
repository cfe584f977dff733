#pragma once

#include "layers/FillPattern.h"

#include <QLineF>
#include <QPolygonF>

#include <vector>

namespace tessaro {

/// A pattern as lines, for pictures of lines and curves, into which tiles can't go.
/// The lines of a hatched pattern within rings (holes stay open), `spacing` apart along the axes as in its tiles.
/// Nothing for the other patterns, which are even tones.
[[nodiscard]] std::vector<QLineF> HatchLines(FillPattern pattern, const std::vector<QPolygonF>& rings, double spacing);

/// How wide these lines are for a tone as that of the tiles, in parts of a tile's pixel.
[[nodiscard]] double HatchWidth(FillPattern pattern);

/// The brush of an even tone: the share of its pattern that is covered, as opacity. No brush for hatched and
/// transparent patterns.
[[nodiscard]] QBrush ToneBrush(FillPattern pattern, const QColor& color);

} // namespace tessaro
