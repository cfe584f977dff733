#include "controls/ElidedLabel.h"

#include "controls/KeyedItem.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace tessaro {

QString ElidedLabel::Shown() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())),
                     Shown());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || Shown() == text()) return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), TipOf(text()), this);
    return true;
}

} // namespace tessaro
