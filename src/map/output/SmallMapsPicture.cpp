#include "map/output/SmallMapsPicture.h"

#include "layers/MapPicture.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace tessaro {

namespace {

constexpr double kGap = 12;
constexpr double kTitleRow = 1.9; ///< of the font's size
constexpr double kLine = 0.5;
const QColor kLineColor(170, 170, 170);

} // namespace

SmallMapsPicture::SmallMapsPicture(LayerStack layers, const std::vector<SmallMap>& maps, const MapBox& extent,
                                   QSize onScreen, QSizeF room, const SheetFont& font)
    : layers_(std::move(layers)), maps_(maps), extent_(extent), onScreen_(onScreen), font_(font) {
    Arrange(room);
}

void SmallMapsPicture::Arrange(QSizeF room) {
    const int count = std::max(static_cast<int>(maps_.size()), 1);
    const double title = font_.size * kTitleRow;
    for (int columns = 1; columns <= count; ++columns) {
        const int rows = (count + columns - 1) / columns;
        const QSizeF most((room.width() - kGap * (columns - 1)) / columns,
                          (room.height() - kGap * (rows - 1)) / rows - title);
        const QSizeF map = QSizeF(onScreen_).scaled(most, Qt::KeepAspectRatio);
        if (map.width() <= map_.width()) continue;
        map_ = map;
        columns_ = columns;
        rows_ = rows;
    }
}

QRectF SmallMapsPicture::PlaceOf(int map) const {
    const QSizeF size(map_.width(), map_.height() + font_.size * kTitleRow);
    return {QPointF(map % columns_ * (size.width() + kGap), map / columns_ * (size.height() + kGap)), size};
}

QSizeF SmallMapsPicture::Size() const {
    const QRectF last = PlaceOf(columns_ * rows_ - 1);
    return {last.right(), last.bottom()};
}

QImage SmallMapsPicture::Draw(int pixelWidth) const {
    const double dots = pixelWidth / Size().width();
    QImage image((Size() * dots).toSize(), QImage::Format_RGB32);
    if (image.isNull()) return image;
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int map = 0; map < static_cast<int>(maps_.size()); ++map)
        DrawMap(painter, map, dots);
    return image;
}

void SmallMapsPicture::DrawMap(QPainter& painter, int map, double dots) const {
    const SmallMap& small = maps_[static_cast<std::size_t>(map)];
    for (int i = 0; i < layers_.Count(); ++i)
        layers_.At(i).symbols = small.symbols[static_cast<std::size_t>(i)];
    const QRectF place = PlaceOf(map);
    QRectF title(place.topLeft() * dots, QSizeF(place.width(), place.height() - map_.height()) * dots);
    const QImage drawn = MapImage(layers_, extent_, onScreen_, PointsOfPixel() * dots);
    painter.drawImage(title.bottomLeft().toPoint(), drawn);
    painter.setPen(QPen(kLineColor, kLine * dots));
    const double half = kLine * dots / 2;
    painter.drawRect(QRectF(title.bottomLeft(), map_ * dots).adjusted(half, half, -half, -half));
    QFont font(font_.name);
    font.setPixelSize(std::max(static_cast<int>(font_.size * dots), 1));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(title, Qt::AlignCenter,
                     QFontMetricsF(font).elidedText(small.title, Qt::ElideRight, title.width()));
}

} // namespace tessaro
