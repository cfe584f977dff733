#pragma once

#include "layers/LayerStack.h"

/// The looks of layers as numbers and colours that a user chooses. For a layer of the theme the classes decide about
/// colours, fills, markers and sizes; its outlines and the form of its lines are the user's.
namespace tessaro {

/// How many styles a kind of layer has: 4 markers, 5 lines, 11 fills.
[[nodiscard]] int StylesOf(LayerKind kind);
/// The number of a layer's style; a line's 0 is solid, see FillPattern and Marker for the others.
[[nodiscard]] int StyleOf(const StackedLayer& layer);
/// Numbers that there are not change nothing.
void SetStyle(StackedLayer& layer, int style);

/// The least and the greatest width that a kind of layer may have; only outlines may have none.
[[nodiscard]] double LeastWidth(LayerKind kind);
[[nodiscard]] double MostWidth(LayerKind kind);
/// The width of lines and of polygons' outlines, the size of markers, in pixels of the screen.
[[nodiscard]] double WidthOf(const StackedLayer& layer);
/// Widths beyond the least and the greatest become the nearest of them.
void SetWidth(StackedLayer& layer, double width);

[[nodiscard]] QColor ColorOf(const StackedLayer& layer);
void SetColor(StackedLayer& layer, const QColor& color);
[[nodiscard]] QColor OutlineOf(const StackedLayer& layer); ///< of polygons and markers
void SetOutline(StackedLayer& layer, const QColor& color);

/// What of a layer's look the user decides.
[[nodiscard]] bool MayStyle(const StackedLayer& layer);
[[nodiscard]] bool MayColor(const StackedLayer& layer);
[[nodiscard]] bool MayWiden(const StackedLayer& layer);

/// Gives new symbols of a theme's layer the outlines and lines that its symbols had before.
void KeepOutlines(LayerSymbols& symbols, const LayerSymbols& before);

/// The look of a layer that was just added: a colour that differs from its neighbours' by `number`, and polygons that
/// let the map below show through.
[[nodiscard]] LayerSymbol FirstLook(int number, bool buffer);

} // namespace tessaro
