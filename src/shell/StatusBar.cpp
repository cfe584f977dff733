#include "shell/StatusBar.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "platform/Clock.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QToolButton>

namespace tessaro {

namespace {

constexpr qsizetype kLongestLine = 2000; ///< more than any window shows; names of a database may be far longer

QLabel* Panel(const char* name, QWidget* parent) {
    auto* panel = new QLabel(parent);
    panel->setObjectName(QLatin1String(name));
    panel->setMinimumWidth(1);
    panel->setTextFormat(Qt::PlainText);
    return panel;
}

} // namespace

StatusBar::StatusBar(QWidget* parent)
    : QWidget(parent), lblText_(Panel("panelText", this)), Picture1_(new QWidget(this)),
      PB_Child_(new QProgressBar(Picture1_)), lblDate_(Panel("panelDate", this)), lblTime_(Panel("panelTime", this)),
      picSound_(new QToolButton(this)) {
    Picture1_->setObjectName(QStringLiteral("Picture1"));
    PB_Child_->setObjectName(QStringLiteral("PB_Child"));
    PB_Child_->setTextVisible(false);
    PB_Child_->setFixedHeight(theme::kGrid);
    auto* meter = new QHBoxLayout(Picture1_);
    meter->setContentsMargins(0, 0, 0, 0);
    meter->addWidget(PB_Child_);
    Picture1_->setFixedWidth(24 * theme::kGrid);
    Picture1_->hide();
    picSound_->setObjectName(QStringLiteral("panelSound"));
    picSound_->setAutoRaise(true);
    picSound_->setFocusPolicy(Qt::TabFocus);
    picSound_->setIconSize({theme::kIconSize - 4, theme::kIconSize - 4});
    auto* first = new QHBoxLayout;
    first->setSpacing(theme::kGrid);
    first->addWidget(lblText_, 1);
    first->addWidget(Picture1_);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2 * theme::kGrid, 2, theme::kGrid, 2);
    row->setSpacing(theme::kGrid);
    row->addLayout(first, 70);
    row->addWidget(lblDate_, 12);
    row->addWidget(lblTime_, 10);
    row->addWidget(picSound_, 8, Qt::AlignRight);
    connect(picSound_, &QToolButton::clicked, this, &StatusBar::SoundPanelClicked);
    whileShown_.setSingleShot(true);
    connect(&whileShown_, &QTimer::timeout, this, [this] { PutText(textAfter_); });
}

void StatusBar::SetText(const QString& text) {
    whileShown_.stop();
    PutText(text);
}

void StatusBar::SetTextFor(const QString& text, int milliseconds) {
    if (!whileShown_.isActive()) textAfter_ = text_;
    PutText(text);
    whileShown_.start(milliseconds);
}

void StatusBar::PutText(const QString& text) {
    text_ = text;
    ShowText();
    // Long work doesn't return to the event loop, so its texts are painted at once.
    lblText_->repaint();
}

void StatusBar::ShowText() {
    QString line = text_.left(kLongestLine);
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    lblText_->setText(lblText_->fontMetrics().elidedText(line, Qt::ElideRight, qMax(1, lblText_->width())));
    lblText_->setAlignment(ReadingSide());
    lblText_->setToolTip(lblText_->text() == line ? QString() : text_.left(kLongestLine));
}

void StatusBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ShowText();
}

void StatusBar::StartProgress() {
    PB_Child_->setRange(0, 100);
    PB_Child_->setValue(0);
    Picture1_->show();
    Picture1_->repaint();
}

void StatusBar::SetProgress(int percent) {
    PB_Child_->setValue(qBound(0, percent, 100));
    PB_Child_->repaint();
}

void StatusBar::EndProgress() {
    Picture1_->hide();
}

void StatusBar::ShowNow() {
    const QDateTime now = Now();
    const QLocale locale = LocaleOfLanguage();
    lblDate_->setText(locale.toString(now.date(), QLocale::ShortFormat));
    lblTime_->setText(locale.toString(now.time(), QLocale::ShortFormat));
}

void StatusBar::ShowSound(bool muted) {
    picSound_->setIcon(theme::Icon(muted ? QStringLiteral("mute.gif") : QStringLiteral("Speaker.gif")));
    const QString key = muted ? QStringLiteral("TS_SoundOff") : QStringLiteral("TS_SoundOn");
    SetToolTip(picSound_, key);
    picSound_->setAccessibleName(PlainText(key));
}

void StatusBar::SetFormCaptions() {
    PB_Child_->setAccessibleName(PlainText(QStringLiteral("TS_Progress")));
    for (QLabel* panel : {lblText_, lblDate_, lblTime_}) {
        panel->setFont(LanguageFont());
        QPalette muted = panel->palette();
        muted.setColor(QPalette::WindowText, theme::MutedText());
        panel->setPalette(muted);
    }
    ShowSound(Mute);
    ShowText();
}

} // namespace tessaro
