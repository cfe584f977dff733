#include "gallery/PresentationList.h"

#include "controls/EmptyHint.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "gallery/GalleryModel.h"
#include "session/Strings.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>

namespace tessaro {

namespace {

constexpr QSize kPicture{72, 48};
constexpr int kGap = theme::kGrid;

/// A text that keeps its own direction in a line of another.
QString Isolated(const QString& text) {
    constexpr char16_t kFirstStrongIsolate = 0x2068;
    constexpr char16_t kEndOfIsolate = 0x2069;
    return QChar(kFirstStrongIsolate) + text + QChar(kEndOfIsolate);
}

/// Date and time to the minute.
QString TimeOf(const QDateTime& time) {
    return Isolated(LocaleOfLanguage().toString(time.date(), QStringLiteral("d MMM yyyy")) + QStringLiteral("  ") +
                    time.time().toString(QStringLiteral("HH:mm")));
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

QSize PresentationDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const {
    const bool folder = model_.At(index.data(GalleryModel::RowRole).toInt()).IsFolder();
    return {kPicture.width() + 4 * kGap, folder ? theme::kIconSize + 2 * kGap : kPicture.height() + 2 * kGap};
}

void PresentationDelegate::PaintPicture(QPainter* painter, const QRect& place, const GalleryEntry& entry,
                                        bool selected) const {
    const QRect icon(place.center() - QPoint(theme::kIconSize, theme::kIconSize) / 2,
                     QSize(theme::kIconSize, theme::kIconSize));
    if (entry.IsFolder()) {
        IconOf(entry).paint(painter, icon, Qt::AlignCenter, selected ? QIcon::Selected : QIcon::Normal);
        return;
    }
    const QImage picture = pictureOf_(entry);
    if (picture.isNull()) {
        painter->fillRect(place, QApplication::palette().base());
        IconOf(entry).paint(painter, icon);
    } else {
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(place, picture);
    }
    painter->setPen(theme::HairLine());
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5));
}

void PresentationDelegate::PaintTexts(QPainter* painter, const QStyleOptionViewItem& item, const QRect& place,
                                      const GalleryEntry& entry) const {
    const bool selected = item.state.testFlag(QStyle::State_Selected);
    const QColor ink = item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    const QFontMetrics metrics(item.font);
    const int lines = entry.IsFolder() ? metrics.height() : 2 * metrics.height() + 2;
    QRect line(place.left(), place.top() + (place.height() - lines) / 2, place.width(), metrics.height());
    const auto draw = [&](const QString& text, const QColor& color) {
        painter->setPen(color);
        painter->drawText(line,
                          static_cast<int>(QStyle::visualAlignment(item.direction, Qt::AlignLeft | Qt::AlignVCenter)),
                          metrics.elidedText(text, Qt::ElideMiddle, line.width()));
        line.translate(0, metrics.height() + 2);
    };
    painter->setFont(item.font);
    draw(Isolated(entry.text), ink);
    if (entry.IsFolder()) return;
    const QString time = TimeOf(entry.modified);
    draw(entry.kind.isNull() ? time : KindWord(entry.kind) + QStringLiteral(" · ") + time,
         selected ? ink : theme::MutedText());
}

void PresentationDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
    const GalleryEntry& entry = model_.At(index.data(GalleryModel::RowRole).toInt());
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle* style = item.widget ? item.widget->style() : QApplication::style();
    const auto mirrored = [&](const QRect& rect) { return QStyle::visualRect(item.direction, item.rect, rect); };
    const QRect inner = item.rect.adjusted(kGap, kGap, -kGap, -kGap);
    painter->save();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);
    PaintPicture(painter, mirrored(QRect(inner.topLeft(), QSize(kPicture.width(), inner.height()))), entry,
                 item.state.testFlag(QStyle::State_Selected));
    PaintTexts(painter, item, mirrored(inner.adjusted(kPicture.width() + kGap + kGap / 2, 0, 0, 0)), entry);
    if (item.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(item);
        focus.rect = item.rect.adjusted(1, 1, -1, -1);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, item.widget);
    }
    painter->restore();
}

} // namespace tessaro
