#pragma once

#include "layers/LayerStack.h"
#include "sheets/SheetFont.h"

#include <QImage>
#include <QSizeF>
#include <QString>

#include <vector>

namespace tessaro {

/// One of several maps: its title, and how its layers are drawn.
struct SmallMap {
    QString title;
    std::vector<LayerSymbols> symbols;
};

/// Several maps of one extent in rows and columns, each with its title above it and a thin line around it, in the
/// arrangement that makes them largest. Lengths are points.
class SmallMapsPicture final {
  public:
    /// `onScreen` is the size of the one map there; the maps have its form.
    SmallMapsPicture(LayerStack layers, const std::vector<SmallMap>& maps, const MapBox& extent, QSize onScreen,
                     QSizeF room, const SheetFont& font);

    [[nodiscard]] QSizeF Size() const;
    /// Of a map, for a pixel of the one map on the screen.
    [[nodiscard]] double PointsOfPixel() const { return map_.width() / onScreen_.width(); }
    /// A null picture when there is no memory for it.
    [[nodiscard]] QImage Draw(int pixelWidth) const;

  private:
    void Arrange(QSizeF room);
    [[nodiscard]] QRectF PlaceOf(int map) const; ///< with the title
    void DrawMap(QPainter& painter, int map, double dots) const;

    mutable LayerStack layers_;
    const std::vector<SmallMap>& maps_;
    const MapBox extent_;
    const QSize onScreen_;
    const SheetFont font_;
    int columns_ = 1;
    int rows_ = 1;
    QSizeF map_; ///< without the title
};

} // namespace tessaro
