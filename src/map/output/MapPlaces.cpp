#include "map/output/MapPlaces.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr double kPixel = 72.0 / 96; ///< points
/// A4 without its margins, header and footer.
constexpr QSizeF kPage{510, 712};

constexpr MapPlaces kSquare{"MapLayoutSquare.xls", 1.7, 46, 2, 65, 4, false, {544, 500}};
constexpr MapPlaces kHorizontal{"MapLayoutHorizontal.xls", 1.5, 36, 2, 55, 4, false, {480, 440}};
constexpr MapPlaces kVertical{"MapLayoutVertical.xls", 2.3, 4, 11, 55, 4, true, {736, 460}};

} // namespace

const MapPlaces& PlacesOf(MapLayout layout) {
    switch (layout) {
    case MapLayout::Horizontal:
        return kHorizontal;
    case MapLayout::Vertical:
        return kVertical;
    case MapLayout::Square:
        break;
    }
    return kSquare;
}

QSizeF MapSizeOn(const MapPlaces& places, QSize onScreen) {
    const QSizeF wanted = QSizeF(onScreen.expandedTo({1, 1})) * (places.scale * kPixel);
    const bool fits = wanted.width() <= places.room.width() && wanted.height() <= places.room.height();
    return fits ? wanted : wanted.scaled(places.room, Qt::KeepAspectRatio);
}

double PrintScale(const MapPlaces& places, QSizeF sheet) {
    // Header and footer stand above and below, however the page lies.
    constexpr double kLines = 757 - kPage.height();
    const QSizeF page = places.landscape ? QSizeF(kPage.height() + kLines, kPage.width() - kLines) : kPage;
    return std::min({1.0, page.width() / sheet.width(), page.height() / sheet.height()});
}

} // namespace tessaro
