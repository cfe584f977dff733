#include "map/output/PageText.h"

#include <QFontMetricsF>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

constexpr double kUsualSize = 10; ///< points

QTextOption OptionOf(const QPainter& painter, Qt::Alignment alignment) {
    QTextOption option(Qt::AlignLeft | alignment); // which is the right one from right to left
    option.setTextDirection(painter.layoutDirection());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

} // namespace

QFont PageFont(const SheetFont& font, double pixelsOfPoint) {
    QFont made = font.name.isEmpty() ? QFont() : QFont(font.name);
    made.setBold(font.bold);
    made.setItalic(font.italic);
    made.setPixelSize(std::max(1, qRound((font.size > 0 ? font.size : kUsualSize) * pixelsOfPoint)));
    return made;
}

double PageText::Height(QPainter& painter, double width) const {
    if (text_.isEmpty()) return 0;
    painter.setFont(font_);
    constexpr double kEndless = 1e7;
    return std::ceil(
        painter.boundingRect(QRectF(0, 0, width, kEndless), text_, OptionOf(painter, Qt::AlignTop)).height());
}

double PageText::NaturalWidth() const {
    return std::ceil(QFontMetricsF(font_).size(0, text_).width()) + 1;
}

void PageText::Paint(QPainter& painter, const QRectF& place, Qt::Alignment alignment) const {
    if (text_.isEmpty()) return;
    painter.setFont(font_);
    painter.setPen(Qt::black);
    painter.drawText(place, text_, OptionOf(painter, alignment));
}

} // namespace tessaro
