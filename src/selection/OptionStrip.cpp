#include "selection/OptionStrip.h"

#include "controls/Theme.h"

#include <QPainter>

namespace tessaro {

namespace {

constexpr int kLineWidth = 3;

} // namespace

OptionStrip::OptionStrip(QWidget* parent) : QTabBar(parent) {
    setDocumentMode(true);
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideNone);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

QSize OptionStrip::tabSizeHint(int index) const {
    QFont bold = font();
    bold.setBold(true); // room for the chosen state, so that nothing moves when it changes
    const QFontMetrics metrics(bold);
    return {metrics.horizontalAdvance(tabText(index)) + 3 * theme::kGrid, metrics.height() + 2 * theme::kGrid};
}

void OptionStrip::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const int hovered = tabAt(mapFromGlobal(QCursor::pos()));
    for (int tab = 0; tab < count(); ++tab) {
        const QRect place = tabRect(tab);
        const bool chosen = tab == currentIndex();
        QFont label = font();
        label.setBold(chosen);
        painter.setFont(label);
        if (chosen)
            painter.fillRect(QRect(place.left() + theme::kGrid, place.bottom() - kLineWidth + 1,
                                   place.width() - 2 * theme::kGrid, kLineWidth),
                             theme::Accent());
        const bool lit = chosen || tab == hovered;
        painter.setPen(!isTabEnabled(tab) ? palette().color(QPalette::Disabled, QPalette::WindowText)
                       : lit              ? palette().color(QPalette::WindowText)
                                          : theme::MutedText());
        painter.drawText(place, static_cast<int>(Qt::AlignCenter), tabText(tab));
        if (chosen && hasFocus()) {
            painter.setPen(QPen(theme::Accent(), 1, Qt::DotLine));
            painter.drawRect(place.adjusted(2, 4, -3, -kLineWidth - 2));
        }
    }
}

} // namespace tessaro
