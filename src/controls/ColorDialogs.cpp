#include "controls/ColorDialogs.h"

#include "controls/Theme.h"

#include <QApplication>
#include <QColorDialog>
#include <QPainter>

#include <utility>

namespace tessaro {

namespace {

ColorAnswerer& TheAnswerer() {
    static ColorAnswerer answerer;
    return answerer;
}

} // namespace

QColor AskForColor(QWidget* parent, const QString& title, const QColor& current) {
    if (TheAnswerer()) return TheAnswerer()(current);
    return QColorDialog::getColor(current, parent, title);
}

void SetColorAnswerer(ColorAnswerer answerer) {
    TheAnswerer() = std::move(answerer);
}

QPixmap ColorSquare(const QColor& color, int side) {
    const qreal ratio = qApp->devicePixelRatio();
    QPixmap square(QSize(side, side) * ratio);
    square.setDevicePixelRatio(ratio);
    square.fill(Qt::transparent);
    QPainter painter(&square);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme::HairLine());
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(0.5, 0.5, side - 1, side - 1), 3, 3);
    return square;
}

} // namespace tessaro
