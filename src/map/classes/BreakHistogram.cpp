#include "map/classes/BreakHistogram.h"

#include "controls/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

constexpr int kBarWidth = 6;
constexpr int kReach = 5; ///< pixels beside a line where it can be taken
constexpr int kMargin = 8;

} // namespace

BreakHistogram::BreakHistogram(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picHistogram"));
    setMinimumHeight(72);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void BreakHistogram::SetValues(std::vector<double> ascending) {
    values_ = std::move(ascending);
    CountBars();
    update();
}

void BreakHistogram::SetClasses(ClassBreaks classes, std::vector<QColor> colors, bool movable, double step) {
    classes_ = std::move(classes);
    colors_ = std::move(colors);
    movable_ = movable;
    step_ = step;
    const int last = static_cast<int>(classes_.size()) - 2; // the last class ends with the values
    chosen_ = movable_ && last >= 0 ? std::clamp(chosen_, 0, last) : -1;
    update();
}

QRect BreakHistogram::Ground() const {
    return rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
}

int BreakHistogram::PlaceOf(double value) const {
    const QRect ground = Ground();
    if (values_.empty() || values_.front() == values_.back()) return ground.center().x();
    const double share = (value - values_.front()) / (values_.back() - values_.front());
    return ground.left() + static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * ground.width()));
}

double BreakHistogram::ValueAt(int place) const {
    if (values_.empty()) return 0;
    const QRect ground = Ground();
    const double share = std::clamp((place - ground.left()) / std::max(1.0, double(ground.width())), 0.0, 1.0);
    return values_.front() + share * (values_.back() - values_.front());
}

void BreakHistogram::CountBars() {
    bars_.assign(static_cast<std::size_t>(std::max(1, Ground().width() / kBarWidth)), 0);
    if (values_.empty()) return;
    const double range = values_.back() - values_.front();
    const auto last = static_cast<double>(bars_.size() - 1);
    for (const double value : values_) {
        const double share = range > 0 ? (value - values_.front()) / range : 0.5;
        ++bars_[static_cast<std::size_t>(std::min(last, share * static_cast<double>(bars_.size())))];
    }
}

QColor BreakHistogram::ColorOf(double value) const {
    const int row = ClassOf(classes_, value);
    return row >= 0 && row < static_cast<int>(colors_.size()) ? colors_[static_cast<std::size_t>(row)] : QColor();
}

void BreakHistogram::PaintBars(QPainter& painter) const {
    const QRect ground = Ground();
    const int most = *std::max_element(bars_.begin(), bars_.end());
    const double width = static_cast<double>(ground.width()) / static_cast<double>(bars_.size());
    painter.setPen(theme::MutedText());
    for (std::size_t bar = 0; bar < bars_.size(); ++bar) {
        if (bars_[bar] == 0) continue;
        const double left = ground.left() + static_cast<double>(bar) * width;
        const double height = std::max(2.0, static_cast<double>(bars_[bar]) * ground.height() / most);
        // The colour of a value that is in the bar: its middle may lie between two classes.
        const auto inBar =
            std::lower_bound(values_.begin(), values_.end(), ValueAt(static_cast<int>(left + width / 2)));
        const QColor color = ColorOf(inBar == values_.end() ? values_.back() : *inBar);
        painter.setBrush(color.isValid() ? QBrush(color) : QBrush(Qt::NoBrush));
        painter.drawRect(QRectF(left, ground.bottom() - height, width - 1, height));
    }
}

void BreakHistogram::PaintBounds(QPainter& painter) const {
    for (std::size_t row = 0; row + 1 < classes_.size(); ++row) {
        const bool chosen = static_cast<int>(row) == chosen_ && hasFocus();
        painter.setPen(QPen(movable_ ? theme::Accent() : theme::MutedText(), chosen ? 3 : 1,
                            movable_ ? Qt::SolidLine : Qt::DashLine));
        const int place = PlaceOf(classes_[row].to);
        painter.drawLine(place, 2, place, height() - 3);
    }
}

void BreakHistogram::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.setPen(theme::HairLine());
    painter.drawLine(0, height() - kMargin, width(), height() - kMargin);
    if (values_.empty()) return;
    PaintBars(painter);
    PaintBounds(painter);
}

void BreakHistogram::resizeEvent(QResizeEvent* /*event*/) {
    CountBars();
}

int BreakHistogram::BoundNear(int place) const {
    int nearest = -1;
    int reach = kReach + 1;
    for (std::size_t row = 0; movable_ && row + 1 < classes_.size(); ++row) {
        const int away = std::abs(PlaceOf(classes_[row].to) - place);
        if (away >= reach) continue;
        reach = away;
        nearest = static_cast<int>(row);
    }
    return nearest;
}

void BreakHistogram::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    dragged_ = BoundNear(event->position().toPoint().x());
    if (dragged_ < 0) return;
    chosen_ = dragged_;
    update();
}

void BreakHistogram::mouseMoveEvent(QMouseEvent* event) {
    const int place = event->position().toPoint().x();
    if (dragged_ >= 0)
        Q_EMIT BoundMoved(dragged_, ValueAt(place));
    else
        setCursor(BoundNear(place) >= 0 ? Qt::SizeHorCursor : Qt::ArrowCursor);
}

void BreakHistogram::mouseReleaseEvent(QMouseEvent* /*event*/) {
    dragged_ = -1;
}

void BreakHistogram::keyPressEvent(QKeyEvent* event) {
    const int last = static_cast<int>(classes_.size()) - 2;
    const int key = event->key();
    if (chosen_ < 0 || chosen_ > last) return QWidget::keyPressEvent(event);
    if (key == Qt::Key_PageDown || key == Qt::Key_PageUp) {
        chosen_ = std::clamp(chosen_ + (key == Qt::Key_PageDown ? 1 : -1), 0, last);
        update();
    } else if (key == Qt::Key_Left || key == Qt::Key_Right) {
        const double way = key == Qt::Key_Right ? step_ : -step_;
        Q_EMIT BoundMoved(chosen_, classes_[static_cast<std::size_t>(chosen_)].to + way);
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace tessaro
