#include "controls/EmptyHint.h"

#include "controls/Theme.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>

namespace tessaro {

namespace {

/// Sees the paint events of a view's viewport.
class HintPainter final : public QObject {
  public:
    explicit HintPainter(QAbstractItemView* view) : QObject(view), view_(view) {
        view->viewport()->installEventFilter(this);
    }
    void SetHint(const QString& hint) {
        hint_ = hint;
        view_->viewport()->update();
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && view_->model() && view_->model()->rowCount(view_->rootIndex()) == 0)
            PaintEmptyHint(view_->viewport(), hint_);
        return QObject::eventFilter(watched, event);
    }

  private:
    QAbstractItemView* view_;
    QString hint_;
};

} // namespace

void PaintEmptyHint(QWidget* viewport, const QString& hint) {
    if (hint.isEmpty()) return;
    QPainter painter(viewport);
    painter.setPen(theme::MutedText());
    const QRect place = viewport->rect().adjusted(2 * theme::kGrid, theme::kGrid, -2 * theme::kGrid, -theme::kGrid);
    painter.drawText(place, static_cast<int>(Qt::AlignCenter) | static_cast<int>(Qt::TextWordWrap), hint);
}

void ShowWhenEmpty(QAbstractItemView* view, const QString& hint) {
    HintPainter* painter = nullptr;
    for (QObject* child : view->children())
        if (auto* known = dynamic_cast<HintPainter*>(child)) painter = known;
    if (!painter) painter = new HintPainter(view);
    painter->SetHint(hint);
}

} // namespace tessaro
