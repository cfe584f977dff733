#include "gallery/PresentationList.h"

#include "controls/KeyedList.h"
#include "controls/Theme.h"
#include "gallery/GalleryModel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>

namespace tessaro {

namespace {

constexpr QSize kPicture{72, 48};
constexpr int kGap = theme::Grid;

/// Date and time to the minute, as one piece in a line that runs from right to left.
QString TimeOf(const QDateTime& time) {
    return QChar(0x2068) + QLocale().toString(time.date(), QLocale::ShortFormat) + QStringLiteral("  ") +
           time.time().toString(QStringLiteral("HH:mm")) + QChar(0x2069);
}

} // namespace

QIcon IconOf(const GalleryEntry& entry) {
    if (entry.IsFolder()) return theme::Icon(QStringLiteral("tree_closed.gif"));
    switch (entry.kind.unicode()) {
    case 'T':
        return theme::Icon(QStringLiteral("table.png"));
    case 'G':
        return theme::Icon(QStringLiteral("graph.png"));
    case 'M':
        return theme::Icon(QStringLiteral("map.png"));
    default:
        return theme::Icon(QStringLiteral("present.png"));
    }
}

PresentationList::PresentationList(QWidget* parent) : QListView(parent) {
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
}

void PresentationList::SetEmptyHint(const QString& hint) {
    hint_ = hint;
    viewport()->update();
}

void PresentationList::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool up = (plain && event->key() == Qt::Key_Backspace) ||
                    (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Up);
    if (up)
        Q_EMIT UpPressed();
    else if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        Q_EMIT EnterPressed();
    else if (plain && event->key() == Qt::Key_Delete)
        Q_EMIT DeletePressed();
    else if (plain && event->key() == Qt::Key_F5)
        Q_EMIT RefreshPressed();
    else
        QListView::keyPressEvent(event);
}

void PresentationList::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid()) return QListView::mouseDoubleClickEvent(event);
    setCurrentIndex(index);
    Q_EMIT EnterPressed();
}

void PresentationList::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (model() && model()->rowCount() == 0) PaintEmptyHint(viewport(), hint_);
}

PresentationDelegate::PresentationDelegate(const GalleryModel& model, PictureOf pictureOf, QObject* parent)
    : QStyledItemDelegate(parent), model_(model), pictureOf_(std::move(pictureOf)) {}

QSize PresentationDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
    return {kPicture.width() + 4 * kGap, kPicture.height() + 2 * kGap};
}

void PresentationDelegate::PaintPicture(QPainter* painter, const QRect& place, const GalleryEntry& entry) const {
    const QImage picture = entry.IsFolder() ? QImage() : pictureOf_(entry);
    if (!picture.isNull()) {
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(place, picture);
    } else {
        const QRect middle(place.center() - QPoint(theme::IconSize, theme::IconSize) / 2,
                           QSize(theme::IconSize, theme::IconSize));
        IconOf(entry).paint(painter, middle);
    }
    if (entry.IsFolder()) return;
    painter->setPen(theme::HairLine());
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5));
}

void PresentationDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
    const GalleryEntry& entry = model_.At(index.data(GalleryModel::RowRole).toInt());
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle* style = item.widget ? item.widget->style() : QApplication::style();
    painter->save();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);
    const auto mirrored = [&](const QRect& rect) { return QStyle::visualRect(item.direction, item.rect, rect); };
    const QRect inner = item.rect.adjusted(kGap, kGap, -kGap, -kGap);
    PaintPicture(painter, mirrored(QRect(inner.topLeft(), kPicture)), entry);

    const QRect texts = inner.adjusted(kPicture.width() + kGap + kGap / 2, 0, 0, 0);
    const bool selected = item.state.testFlag(QStyle::State_Selected);
    const QColor ink = item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    const QFontMetrics metrics(item.font);
    const int line = metrics.height();
    const int lines = entry.IsFolder() ? line : 2 * line + 2;
    QRect place(texts.left(), texts.top() + (texts.height() - lines) / 2, texts.width(), line);
    const auto draw = [&](const QString& text, const QColor& color) {
        painter->setPen(color);
        painter->setFont(item.font);
        painter->drawText(mirrored(place),
                          static_cast<int>(QStyle::visualAlignment(item.direction, Qt::AlignLeft | Qt::AlignVCenter)),
                          metrics.elidedText(text, Qt::ElideMiddle, place.width()));
    };
    draw(entry.text, ink);
    if (!entry.IsFolder()) {
        place.translate(0, line + 2);
        const QString date = TimeOf(entry.modified);
        draw(entry.kind.isNull() ? date : KindWord(entry.kind) + QStringLiteral(" · ") + date,
             selected ? ink : theme::MutedText());
    }
    if (item.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(item);
        focus.rect = item.rect.adjusted(1, 1, -1, -1);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, item.widget);
    }
    painter->restore();
}

} // namespace tessaro
