#include "controls/AccessLetter.h"

#include "session/CaptionText.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace tessaro {

AccessLetter::AccessLetter(const QString& caption) {
    const CaptionText text = ReadCaption(caption);
    plain = text.plain;
    position = text.letter;
}

bool AccessLetter::JoinsItsNeighbours() const {
    return position >= 0 && plain.at(position).joiningType() != QChar::Joining_None;
}

void AccessLetter::Underline(QPainter& painter, const QRect& place) const {
    constexpr qreal kEndless = 1e6;
    QTextLayout layout(plain, painter.font());
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(kEndless);
    layout.endLayout();
    const qreal from = line.cursorToX(static_cast<int>(position));
    const qreal to = line.cursorToX(static_cast<int>(position) + 1);
    const qreal left = place.left() + std::min(from, to) - line.naturalTextRect().left();
    const QFontMetrics metrics = painter.fontMetrics();
    const int top = place.top() + metrics.ascent() + std::max(1, metrics.underlinePos());
    painter.fillRect(QRectF(left, top, std::abs(to - from), std::max(1, metrics.lineWidth())), painter.pen().color());
}

} // namespace tessaro
