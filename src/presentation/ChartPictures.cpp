#include "presentation/ChartPictures.h"

#include "controls/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace tessaro {

namespace {

/// Heights of the drawn values, of the whole.
constexpr qreal kFirst[] = {0.45, 0.75, 0.6, 0.9};
constexpr qreal kSecond[] = {0.25, 0.4, 0.55, 0.5};
constexpr int kCount = 4;

void DrawBars(QPainter& painter, const QRectF& area, bool lying, const QColor& ink, const QColor& accent) {
    const qreal step = (lying ? area.height() : area.width()) / kCount;
    for (int i = 0; i < kCount; ++i) {
        const qreal value = kFirst[i] * (lying ? area.width() : area.height());
        const QRectF bar = lying
                               ? QRectF(area.left(), area.top() + i * step + step * 0.15, value, step * 0.7)
                               : QRectF(area.left() + i * step + step * 0.15, area.bottom() - value, step * 0.7, value);
        painter.fillRect(bar, i == kCount - 1 ? accent : ink);
    }
}

QPolygonF Line(const QRectF& area, const qreal* values) {
    QPolygonF line;
    for (int i = 0; i < kCount; ++i)
        line << QPointF(area.left() + area.width() * i / (kCount - 1), area.bottom() - area.height() * values[i]);
    return line;
}

void DrawLines(QPainter& painter, const QRectF& area, bool filled, const QColor& ink, const QColor& accent) {
    const std::pair<const qreal*, QColor> lines[] = {{kFirst, ink}, {kSecond, accent}};
    for (const auto& [values, color] : lines) {
        QPolygonF line = Line(area, values);
        if (filled) {
            line << area.bottomRight() << area.bottomLeft();
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawPolygon(line);
        } else {
            painter.setPen(QPen(color, area.height() / 12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.setBrush(Qt::NoBrush);
            painter.drawPolyline(line);
        }
    }
}

void DrawPie(QPainter& painter, const QRectF& area, const QColor& ink, const QColor& accent) {
    const qreal side = std::min(area.width(), area.height());
    const QRectF circle(area.center().x() - side / 2, area.center().y() - side / 2, side, side);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPie(circle, 90 * 16, 245 * 16);
    painter.setBrush(accent);
    painter.drawPie(circle.translated(side / 24, -side / 24), -25 * 16, 115 * 16);
}

void DrawScatter(QPainter& painter, const QRectF& area, const QColor& ink, const QColor& accent) {
    constexpr QPointF kPoints[] = {{0.1, 0.2},  {0.25, 0.4}, {0.4, 0.3}, {0.5, 0.6},
                                   {0.7, 0.55}, {0.8, 0.85}, {0.95, 0.7}};
    const qreal radius = area.height() / 12;
    painter.setPen(Qt::NoPen);
    int number = 0;
    for (const QPointF& point : kPoints) {
        painter.setBrush(number++ % 3 == 2 ? accent : ink);
        painter.drawEllipse(QPointF(area.left() + area.width() * point.x(), area.bottom() - area.height() * point.y()),
                            radius, radius);
    }
}

void DrawAxes(QPainter& painter, const QRectF& area, const QColor& color) {
    painter.setPen(QPen(color, 1));
    painter.drawLine(area.topLeft(), area.bottomLeft());
    painter.drawLine(area.bottomLeft(), area.bottomRight());
}

} // namespace

namespace {

/// The colours of a picture: of most of it, of the part that stands out, and of the axes.
struct Inks {
    QColor ink;
    QColor accent;
    QColor axes;
};

QPixmap Drawn(office::ChartKind kind, const Inks& inks, QSize size, qreal ratio) {
    const auto& [ink, accent, axes] = inks;
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(QPointF(), QSizeF(size)).adjusted(6, 10, -6, -2);
    using office::ChartKind;
    switch (kind) {
    case ChartKind::Column:
        DrawBars(painter, area, false, ink, accent);
        break;
    case ChartKind::Bar:
        DrawBars(painter, area, true, ink, accent);
        break;
    case ChartKind::Line:
        DrawLines(painter, area, false, ink, accent);
        break;
    case ChartKind::Area:
        DrawLines(painter, area, true, ink, accent);
        break;
    case ChartKind::Pie:
        DrawPie(painter, area, ink, accent);
        break;
    case ChartKind::Scatter:
        DrawScatter(painter, area, ink, accent);
        break;
    }
    if (kind != ChartKind::Pie) DrawAxes(painter, area, axes);
    return picture;
}

} // namespace

QIcon ChartPicture(office::ChartKind kind, const QPalette& palette, QSize size, qreal ratio) {
    const QColor chosen = palette.color(QPalette::HighlightedText);
    QColor pale = chosen;
    pale.setAlphaF(0.55F);
    QIcon icon(Drawn(kind, {theme::MutedText(), theme::Accent(), palette.color(QPalette::WindowText)}, size, ratio));
    icon.addPixmap(Drawn(kind, {pale, chosen, chosen}, size, ratio), QIcon::Selected);
    return icon;
}

} // namespace tessaro
