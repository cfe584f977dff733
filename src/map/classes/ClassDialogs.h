#pragma once

#include "map/classes/ClassTable.h"

#include <optional>

class QPoint;
class QWidget;

namespace tessaro {

// The small windows by which cells of the grid of classes are changed. Each gives nothing when it was cancelled.

/// frmMAPFrom_To: a bound, as the user types it.
[[nodiscard]] std::optional<QString> AskForBreak(QWidget* parent, const QString& heading, const QString& text);
/// frmMAPLabelCustomize: the text of a legend and its font.
[[nodiscard]] std::optional<ClassLook> AskForLegend(QWidget* parent, ClassLook look);
/// frmMAPSizeCustomize: the size of a marker, from 1 to 250.
[[nodiscard]] std::optional<int> AskForMarkerSize(QWidget* parent, int size);
/// frmPStyle: the fill of polygons; frmStyle: the marker of points. Beside a place of the screen.
[[nodiscard]] std::optional<int> AskForFill(QWidget* parent, QPoint place);
[[nodiscard]] std::optional<int> AskForMarker(QWidget* parent, QPoint place);

/// Name and picture of a fill or marker.
[[nodiscard]] QString NameOfFill(int fill);
[[nodiscard]] QString NameOfMarker(int marker);
/// A transparent picture of so many pixels of the window, with as many of the screen as it has for these.
[[nodiscard]] QPixmap EmptyPicture(QSize size);
[[nodiscard]] QPixmap FillPicture(int fill, const QColor& color, QSize size);
[[nodiscard]] QPixmap MarkerPicture(int marker, const QColor& color, QSize size);

/// frmMAPPaletteCustomize: a palette file of a folder, and what is taken from it.
struct PaletteChoice {
    QString fileName;
    bool labels = false;
    bool colors = false;
    bool range = false;
};
[[nodiscard]] std::optional<PaletteChoice> AskForPalette(QWidget* parent, const QString& folder);

} // namespace tessaro
