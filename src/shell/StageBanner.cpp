#include "shell/StageBanner.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "session/Strings.h"
#include "shell/Navigation.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QShortcut>
#include <QStyle>

namespace tessaro {

namespace {

constexpr int kMarkSize = 4 * theme::kGrid;
constexpr int kBarHeight = 3;

const navigation::StageRow& RowOf(int stage) {
    return navigation::Stages.at(static_cast<std::size_t>(stage));
}

QString StateText(StepState state) {
    switch (state) {
    case StepState::Current:
        return PlainText(QStringLiteral("TS_StageCurrent"));
    case StepState::Done:
        return PlainText(QStringLiteral("TS_StageDone"));
    case StepState::Next:
        break;
    }
    return PlainText(QStringLiteral("TS_StageNext"));
}

} // namespace

StageButton::StageButton(int stage, QWidget* parent) : QAbstractButton(parent), stage_(stage) {
    setObjectName(QStringLiteral("picBannerButtons_%1").arg(stage));
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void StageButton::SetState(StepState state) {
    state_ = state;
    Describe();
    update();
}

void StageButton::SetSummary(const QString& summary) {
    if (summary == summary_) return;
    summary_ = summary;
    Describe();
    update();
}

void StageButton::ShowSummary(bool shown) {
    if (shown == summaryShown_) return;
    summaryShown_ = shown;
    Describe();
    update();
}

void StageButton::SetFormCaptions() {
    const navigation::StageRow& row = RowOf(stage_);
    setFont(LanguageFont());
    caption_ = PlainText(QLatin1String(row.captionKey));
    if (caption_.isEmpty()) caption_ = PlainText(QLatin1String(row.toolTipKey));
    setToolTip(QStringLiteral("%1 (%2)").arg(PlainText(QLatin1String(row.toolTipKey)),
                                             shortcut().toString(QKeySequence::NativeText)));
    Describe();
    updateGeometry();
    update();
}

void StageButton::Describe() {
    const QString step = PlainText(QStringLiteral("TS_StageOf"))
                             .replace(QLatin1String("%1"), QString::number(stage_ + 1))
                             .replace(QLatin1String("%2"), QString::number(navigation::kStageCount));
    setAccessibleName(QStringLiteral("%1: %2").arg(step, caption_));
    const QString summary = summaryShown_ ? summary_ : QString();
    setAccessibleDescription(summary.isEmpty() ? StateText(state_) : StateText(state_) + QLatin1String(", ") + summary);
}

QSize StageButton::sizeHint() const {
    const int textHeight = fontMetrics().height() * 2;
    return {24 * theme::kGrid, qMax(kMarkSize, textHeight) + 2 * theme::kGrid};
}

void StageButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintPlace(painter);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int top = (height() - kBarHeight - kMarkSize) / 2;
    const int start = 2 * theme::kGrid;
    const QRect circle(mirrored ? width() - start - kMarkSize : start, top, kMarkSize, kMarkSize);
    PaintMark(painter, circle);
    const int textStart = start + kMarkSize + theme::kGrid + theme::kGrid / 2;
    QRect texts(textStart, 0, width() - textStart - 3 * theme::kGrid, height() - kBarHeight);
    if (mirrored) texts.moveLeft(3 * theme::kGrid);
    PaintTexts(painter, texts);
}

/// The background, the bar below the current step, and the arrow towards the next one.
void StageButton::PaintPlace(QPainter& painter) const {
    const bool current = state_ == StepState::Current;
    if (current)
        painter.fillRect(rect(), palette().base());
    else if (underMouse() && isEnabled())
        painter.fillRect(rect(), theme::HoverSurface());
    if (current)
        painter.fillRect(QRect(0, height() - kBarHeight, width(), kBarHeight), theme::Accent());
    else
        painter.fillRect(QRect(0, height() - 1, width(), 1), theme::HairLine());
    if (hasFocus()) {
        painter.setPen(QPen(theme::Accent(), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -kBarHeight - 2.5), 4, 4);
    }
    if (stage_ == navigation::kDataStage) return;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const qreal x = mirrored ? theme::kGrid + 5 : width() - theme::kGrid - 5;
    const qreal middle = (height() - kBarHeight) / 2.0;
    const qreal point = mirrored ? -5 : 5;
    QPainterPath chevron(QPointF(x - point / 2, middle - 7));
    chevron.lineTo(x + point / 2, middle);
    chevron.lineTo(x - point / 2, middle + 7);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(chevron);
}

void StageButton::PaintMark(QPainter& painter, const QRect& circle) const {
    const QColor accent = theme::Accent();
    QColor soft = accent;
    soft.setAlphaF(0.14F);
    const bool current = state_ == StepState::Current;
    const bool done = state_ == StepState::Done;
    painter.setPen(QPen(state_ == StepState::Next ? palette().color(QPalette::Mid) : accent, 1.5));
    painter.setBrush(current ? QBrush(palette().color(QPalette::Highlight)) : done ? QBrush(soft) : Qt::NoBrush);
    painter.drawEllipse(QRectF(circle).adjusted(1, 1, -1, -1));
    const QIcon icon = theme::Icon(done ? QStringLiteral("done.png") : QLatin1String(RowOf(stage_).picture));
    const int inset = (kMarkSize - theme::kIconSize + 2) / 2;
    icon.paint(&painter, circle.adjusted(inset, inset, -inset, -inset), Qt::AlignCenter,
               current ? QIcon::Selected : QIcon::Normal);
}

void StageButton::PaintTexts(QPainter& painter, const QRect& place) const {
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics boldMetrics(bold);
    const QFontMetrics metrics(font());
    const int needed = boldMetrics.height() + metrics.height();
    QRect line(place.left(), place.top() + (place.height() - needed) / 2, place.width(), boldMetrics.height());
    const int align = static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) | Qt::AlignVCenter;
    painter.setFont(bold);
    painter.setPen(state_ == StepState::Current ? theme::Accent() : palette().color(QPalette::WindowText));
    painter.drawText(line, align, boldMetrics.elidedText(caption_, Qt::ElideRight, line.width()));
    line.translate(0, boldMetrics.height());
    line.setHeight(metrics.height());
    const QString summary = summary_.isEmpty() && stage_ != navigation::kDataStage
                                ? PlainText(QStringLiteral("TS_NothingSelectedShort"))
                            : summaryShown_ ? summary_
                                            : QString();
    painter.setFont(font());
    painter.setPen(theme::MutedText());
    painter.drawText(line, align, metrics.elidedText(summary, Qt::ElideRight, line.width()));
}

void StageButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void StageButton::enterEvent(QEnterEvent* event) {
    update();
    QAbstractButton::enterEvent(event);
}

void StageButton::leaveEvent(QEvent* event) {
    update();
    QAbstractButton::leaveEvent(event);
}

StageBanner::StageBanner(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (int stage = 0; stage < navigation::kStageCount; ++stage) {
        auto* button = new StageButton(stage, this);
        button->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(stage + 1)));
        // A stage opens when its button is pressed, not released. A message box that comes up then takes the release,
        // so the button is set to its normal state first.
        connect(button, &QAbstractButton::pressed, this, [this, button, stage] {
            button->setDown(false);
            Q_EMIT Pressed(stage);
        });
        row->addWidget(button, 1);
        buttons_.at(static_cast<std::size_t>(stage)) = button;
    }
}

void StageBanner::SetCurrent(int stage) {
    current_ = stage;
    ShowStates();
}

void StageBanner::SetSummary(int stage, const QString& summary) {
    Button(stage)->SetSummary(summary);
    ShowStates();
}

void StageBanner::ClearSummaries() {
    for (int stage = 0; stage < navigation::kStageCount; ++stage)
        Button(stage)->SetSummary({});
    ShowStates();
}

void StageBanner::ShowStates() {
    // The number of rows counts only while each of the three steps before has a selection.
    bool before = true;
    for (int stage = 0; stage < navigation::kStageCount; ++stage) {
        StageButton* button = Button(stage);
        const bool has = !button->Summary().isEmpty();
        const bool chosen = has && (stage != navigation::kDataStage || before);
        before = before && has;
        button->ShowSummary(stage != navigation::kDataStage || before);
        button->SetState(stage == current_ ? StepState::Current : chosen ? StepState::Done : StepState::Next);
    }
}

void StageBanner::SetFormCaptions() {
    setAccessibleName(PlainText(QStringLiteral("TS_Stages")));
    for (StageButton* button : buttons_)
        button->SetFormCaptions();
}

} // namespace tessaro
