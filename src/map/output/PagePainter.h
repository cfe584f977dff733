#pragma once

#include "map/MapPage.h"

#include <QSizeF>
#include <QStringList>

class QPainter;

namespace tessaro {

/// What a page tells beside the texts of the draft.
struct PageNotes {
    QString sourceCaption;
    QStringList sources;
    QString years; ///< when the values are of different ones
    bool rightToLeft = false;
};
/// The notes to the values in `_MapData`, in the current language.
[[nodiscard]] PageNotes NotesOfMapData();

/// A4 in points, as the layout has it lie.
[[nodiscard]] QSizeF PageSize(MapLayout layout);

/// Paints the page as one publishes it: titles, map, legend, notes, disclaimer. `pixelsOfPoint` makes it larger: the
/// device has so many pixels for a point of PageSize.
void PaintPage(QPainter& painter, const MapPage& page, const PageNotes& notes, double pixelsOfPoint);

} // namespace tessaro
