#include "map/custom/LayerPictures.h"

#include "controls/TintedIcon.h"
#include "map/classes/ClassDialogs.h"
#include "session/Strings.h"

#include <QPainter>

#include <algorithm>

namespace tessaro {

namespace {

constexpr const char* kLines[] = {"Solid line", "Dash line", "Dot line", "Dash dot line", "Dash dot dot line"};

QPixmap LinePicture(int style, const QColor& color, QSize size) {
    QPixmap picture = EmptyPicture(size);
    QPainter painter(&picture);
    painter.setPen(QPen(color, 2, static_cast<Qt::PenStyle>(Qt::SolidLine + style), Qt::FlatCap));
    painter.drawLine(0, size.height() / 2, size.width(), size.height() / 2);
    return picture;
}

} // namespace

QString NameOfStyle(LayerKind kind, int style) {
    if (kind == LayerKind::Point) return NameOfMarker(style);
    if (kind == LayerKind::Polygon) return NameOfFill(style);
    return PlainText(QLatin1String(kLines[std::clamp(style, 0, static_cast<int>(std::size(kLines)) - 1)]));
}

QPixmap PictureOfStyle(LayerKind kind, int style, const QColor& color, QSize size) {
    if (kind == LayerKind::Point) return MarkerPicture(style, color, size);
    if (kind == LayerKind::Polygon) return FillPicture(style, color, size);
    return LinePicture(style, color, size);
}

QString NameOfKind(LayerKind kind) {
    return PlainText(kind == LayerKind::Point  ? QStringLiteral("Point")
                     : kind == LayerKind::Line ? QStringLiteral("Line")
                                               : QStringLiteral("Polygon"));
}

QIcon IconOfKind(LayerKind kind) {
    return theme::Icon(kind == LayerKind::Point  ? QStringLiteral("point.bmp")
                       : kind == LayerKind::Line ? QStringLiteral("line.bmp")
                                                 : QStringLiteral("polygon.bmp"));
}

} // namespace tessaro
