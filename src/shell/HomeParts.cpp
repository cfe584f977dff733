#include "shell/HomeParts.h"

#include "controls/Theme.h"

#include <QIcon>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QMovie>
#include <QPainter>
#include <QStyle>
#include <QSvgRenderer>

namespace tessaro {

namespace {

/// A picture in a given height; a vector picture is drawn at the resolution of the screen.
QPixmap Drawn(const QString& file, int height, qreal ratio) {
    if (!file.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
        const QPixmap picture(file);
        return picture.isNull() ? picture : picture.scaledToHeight(height, Qt::SmoothTransformation);
    }
    QSvgRenderer renderer(file);
    if (!renderer.isValid() || renderer.defaultSize().height() == 0) return {};
    const int width = renderer.defaultSize().width() * height / renderer.defaultSize().height();
    QPixmap picture(QSize(width, height) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    renderer.render(&painter, QRectF(0, 0, width, height));
    return picture;
}

bool IsEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

HeroStrip::HeroStrip(QWidget* parent) : QWidget(parent) {}

void HeroStrip::SetColor(const QColor& color) {
    color_ = color;
    update();
}

void HeroStrip::SetPicture(const QString& file) {
    file_ = file;
    picture_ = {};
    delete movie_;
    movie_ = nullptr;
    if (file.endsWith(QLatin1String(".gif"), Qt::CaseInsensitive)) {
        movie_ = new QMovie(file, {}, this);
        connect(movie_, &QMovie::frameChanged, this, qOverload<>(&QWidget::update));
        movie_->start();
    }
    update();
}

void HeroStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), color_.isValid() ? color_ : palette().color(QPalette::Highlight));
    if (file_.isEmpty() || height() <= 0) return;
    const qreal ratio = devicePixelRatioF();
    if (movie_)
        picture_ = movie_->currentPixmap();
    else if (picture_.isNull() || picture_.height() != qRound(height() * 1.25 * ratio))
        picture_ = Drawn(file_, qRound(height() * 1.25), ratio);
    if (picture_.isNull()) return;
    const QSizeF size = picture_.deviceIndependentSize();
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const qreal left = mirrored ? 0 : width() - size.width();
    painter.drawPixmap(QPointF(left, (height() - size.height()) / 2), picture_);
    // The picture fades towards the name.
    QLinearGradient fade(mirrored ? size.width() : left, 0, mirrored ? size.width() * 0.35 : left + size.width() * 0.65,
                         0);
    QColor clear = color_;
    clear.setAlpha(0);
    fade.setColorAt(0, color_);
    fade.setColorAt(1, clear);
    painter.fillRect(QRectF(left, 0, size.width(), height()), fade);
}

PictureButton::PictureButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize PictureButton::sizeHint() const {
    return {20 * theme::kGrid, 6 * theme::kGrid + fontMetrics().height() + 4 * theme::kGrid};
}

void PictureButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool hot = underMouse() || hasFocus();
    painter.setPen(QPen(hot ? theme::Accent() : theme::HairLine(), hasFocus() ? 2 : 1));
    painter.setBrush(underMouse() ? theme::HoverSurface() : palette().color(QPalette::Base));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
    const int size = 5 * theme::kGrid;
    const QRect picture((width() - size) / 2, 2 * theme::kGrid, size, size);
    icon().paint(&painter, picture);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(hot ? theme::Accent() : palette().color(QPalette::WindowText));
    const QRect caption(theme::kGrid, picture.bottom() + theme::kGrid, width() - 2 * theme::kGrid,
                        height() - picture.bottom() - 2 * theme::kGrid);
    const QString shown = number_ > 0 ? QStringLiteral("%1  %2").arg(locale().toString(number_), text()) : text();
    painter.drawText(caption, Qt::AlignCenter, QFontMetrics(bold).elidedText(shown, Qt::ElideRight, caption.width()));
}

void PictureButton::keyPressEvent(QKeyEvent* event) {
    IsEnter(*event) ? click() : QAbstractButton::keyPressEvent(event);
}

void PictureButton::enterEvent(QEnterEvent* event) {
    update();
    QAbstractButton::enterEvent(event);
}

void PictureButton::leaveEvent(QEvent* event) {
    update();
    QAbstractButton::leaveEvent(event);
}

LinkButton::LinkButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

void LinkButton::SetHotColor(const QColor& color) {
    hot_ = color;
    update();
}

QSize LinkButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 4, fontMetrics().height() + theme::kGrid};
}

void LinkButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QFont shown = font();
    const bool hot = isEnabled() && (underMouse() || hasFocus());
    shown.setUnderline(hot);
    painter.setFont(shown);
    const QColor color = hot && hot_.isValid() && !theme::IsDark() ? hot_ : theme::Accent();
    painter.setPen(isEnabled() ? color : palette().color(QPalette::Disabled, QPalette::WindowText));
    const auto align = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignVCenter;
    painter.drawText(rect(), static_cast<int>(align), text());
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
    IsEnter(*event) ? click() : QAbstractButton::keyPressEvent(event);
}

void LinkButton::enterEvent(QEnterEvent* event) {
    update();
    QAbstractButton::enterEvent(event);
}

void LinkButton::leaveEvent(QEvent* event) {
    update();
    QAbstractButton::leaveEvent(event);
}

DatabaseList::DatabaseList(QWidget* parent) : QListWidget(parent) {
    setIconSize({theme::kIconSize, theme::kIconSize});
    setMouseTracking(true);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { Q_EMIT Chosen(item->data(Qt::UserRole).toString()); });
}

void DatabaseList::SetHint(const QString& hint) {
    hint_ = hint;
    viewport()->update();
}

void DatabaseList::keyPressEvent(QKeyEvent* event) {
    if (IsEnter(*event) && currentItem()) {
        Q_EMIT Chosen(currentItem()->data(Qt::UserRole).toString());
        return;
    }
    QListWidget::keyPressEvent(event);
}

void DatabaseList::paintEvent(QPaintEvent* event) {
    QListWidget::paintEvent(event);
    if (count() > 0 || hint_.isEmpty()) return;
    QPainter painter(viewport());
    painter.setPen(theme::MutedText());
    const QRect place =
        viewport()->rect().adjusted(2 * theme::kGrid, 2 * theme::kGrid, -2 * theme::kGrid, -2 * theme::kGrid);
    painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

} // namespace tessaro
