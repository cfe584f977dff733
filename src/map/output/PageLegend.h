#pragma once

#include "map/MapDraft.h"
#include "map/output/LegendPlan.h"
#include "map/output/PageText.h"

#include <vector>

namespace tessaro {

/// How the map and its page are drawn on a device.
struct PageScale {
    double pixelsOfPoint = 1; ///< pixels of the device for a point of the page
    double ofSymbols = 1;     ///< pixels of the device for one of the screen, as the map's symbols have them
};

/// The legend of a map: its title, and a swatch with a text for each class and for missing data. Areas have their
/// pattern, points their marker in the size that it has on the map, and with both kinds each row has both.
class PageLegend final {
  public:
    PageLegend(const MapDraft& draft, const PageScale& scale);

    /// Finds the columns for a place of at most this size: as few as give a calm form, all smaller where even many
    /// don't suffice. Gives the size that it takes.
    QSizeF Arrange(QPainter& painter, QSizeF most, bool beside);
    /// Paints it as arranged, from the side on which lines begin.
    void Paint(QPainter& painter, const QRectF& place) const;

  private:
    struct Row {
        LayerSymbol symbol;
        PageText text;
        double height = 0;
    };

    void Make(double shrink);
    void AddRow(const LegendLine& line, double shrink);
    [[nodiscard]] double Points(double points) const { return points * scale_.pixelsOfPoint * shrink_; }
    [[nodiscard]] double SwatchWidth() const;
    [[nodiscard]] bool Fits(QPainter& painter, QSizeF most, bool beside);
    [[nodiscard]] double SetColumns(QPainter& painter, int columns, double width);
    void PaintRow(QPainter& painter, const Row& row, const QRectF& place) const;
    void PaintSwatches(QPainter& painter, const Row& row, const QRectF& place) const;

    const MapDraft& draft_;
    PageScale scale_;
    double shrink_ = 1;
    PageText title_;
    std::vector<Row> rows_;
    double largestMarker_ = 0;
    double titleHeight_ = 0;
    int rowsOfColumn_ = 1;
    double columnWidth_ = 0;
    QSizeF size_;
};

} // namespace tessaro
