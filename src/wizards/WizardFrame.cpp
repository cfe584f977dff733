#include "wizards/WizardFrame.h"

#include "controls/ArrowPointer.h"
#include "controls/Captions.h"
#include "controls/Theme.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "ui_WizardFrame.h"

#include <QLabel>
#include <QLocale>
#include <QTimer>

#include <utility>

namespace tessaro {

namespace {

/// The wait cursor, and the wizard closed to further clicks, for as long as a step is on its way.
class BusyGuard final {
  public:
    explicit BusyGuard(bool& busy) : busy_(busy), before_(std::exchange(busy, true)) {}
    ~BusyGuard() { busy_ = before_; }
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

  private:
    bool& busy_;
    const bool before_;
    WaitPointer wait_;
};

} // namespace

WizardFrame::WizardFrame(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::WizardFrame>()) {
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    SetCaption(ui_->CmdBack, QStringLiteral("Comm_Back"));
    SetCaption(ui_->CmdNext, QStringLiteral("COMM_NEXT"));
    SetCaption(ui_->CmdFinish, QStringLiteral("TS_Finish"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    ui_->picSteps->setAutoFillBackground(true);
    QPalette strip = palette();
    strip.setColor(QPalette::Window, theme::SurfaceRaised());
    ui_->picSteps->setPalette(strip);
    QPalette line = palette();
    line.setColor(QPalette::WindowText, theme::HairLine());
    for (QFrame* hairLine : {ui_->hairLineTop, ui_->hairLineBottom}) {
        hairLine->setFrameShadow(QFrame::Plain);
        hairLine->setPalette(line);
    }
    connect(ui_->CmdBack, &QPushButton::clicked, this, &WizardFrame::CmdBack_Click);
    connect(ui_->CmdNext, &QPushButton::clicked, this, &WizardFrame::CmdNext_Click);
    connect(ui_->CmdFinish, &QPushButton::clicked, this, &WizardFrame::CmdFinish_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &WizardFrame::CmdCancel_Click);
    ClearProgress();
}

WizardFrame::~WizardFrame() = default;

void WizardFrame::SetTitle(const QString& title) {
    title_ = title;
}

void WizardFrame::AddStep(QWidget* page, const QString& nameKey) {
    pageKeys_ << nameKey;
    pages_ << page;
    if (page) ui_->pages->addWidget(page);
    auto* label = new QLabel(ui_->picSteps);
    label->setText(QLocale().toString(pageKeys_.size()) + QStringLiteral("  ") + PlainText(nameKey));
    ui_->trail->addWidget(label);
    trail_ << label;
}

void WizardFrame::AddButton(QAbstractButton* button) {
    // Before the line of status, which takes the room that is left.
    ui_->bottom->insertWidget(ui_->bottom->indexOf(ui_->StatusBar1), button);
    ui_->bottom->setStretch(ui_->bottom->indexOf(button), 0);
    ui_->bottom->setStretchFactor(ui_->StatusBar1, 1);
}

void WizardFrame::Begin() {
    ui_->trail->addStretch();
    ui_->pages->setCurrentWidget(pages_.front());
    EnterStep(1);
}

void WizardFrame::EnterStep(int step) {
    step_ = step;
    ShowStep();
    PageShown(step);
}

void WizardFrame::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    if (!std::exchange(painted_, true)) QTimer::singleShot(0, this, &WizardFrame::RunStart);
}

void WizardFrame::RunStart() {
    if (step_ == kDoneStep) return;
    {
        const BusyGuard guard(busy_);
        ErrorTrap trap("Form_Activate");
        trap.Try([&] { Start(); });
    }
    ClearProgress();
    SetStatus({});
}

int WizardFrame::ShowDialog(QDialog& dialog) {
    const ArrowPointer arrow;
    return dialog.exec();
}

QString WizardFrame::StepCaption(int step, const QString& nameKey) const {
    QString caption = GetText(QStringLiteral("TS_WizardCaption"));
    if (caption.isEmpty()) caption = QStringLiteral("%1 - %2 / %3 - %4"); // a language file without it
    return caption.replace(QStringLiteral("%2"), QLocale().toString(step))
        .replace(QStringLiteral("%3"), QLocale().toString(StepCount()))
        .replace(QStringLiteral("%4"), PlainText(nameKey.isEmpty() ? pageKeys_.at(step - 1) : nameKey))
        .replace(QStringLiteral("%1"), title_);
}

void WizardFrame::ShowStep(const QString& nameKey) {
    if (step_ < 1 || step_ > StepCount()) return;
    MarkStep(step_, nameKey);
    if (pages_.at(step_ - 1)) ui_->pages->setCurrentWidget(pages_.at(step_ - 1));
    ui_->CmdBack->setEnabled(wayOpen_ && step_ > 1);
    ui_->CmdNext->setEnabled(wayOpen_ && step_ < StepCount() && MayGoForward());
    ui_->CmdFinish->setEnabled(wayOpen_ && MayFinish());
    const bool ends = step_ == StepCount() && MayFinish(); // where Next is off, Return is Finish
    ui_->CmdNext->setDefault(!ends);
    ui_->CmdFinish->setDefault(ends);
}

/// Caption and trail of a step.
void WizardFrame::MarkStep(int step, const QString& nameKey) {
    if (step < 1 || step > StepCount()) return;
    setWindowTitle(StepCaption(step, nameKey));
    for (int i = 0; i < trail_.size(); ++i) {
        QLabel* label = trail_.at(i);
        QFont font = label->font();
        font.setBold(i + 1 == step);
        label->setFont(font);
        QPalette colors = palette();
        colors.setColor(QPalette::WindowText, i + 1 == step  ? theme::Accent()
                                              : i + 1 < step ? palette().color(QPalette::WindowText)
                                                             : theme::MutedText());
        label->setPalette(colors);
    }
}

bool WizardFrame::Forward() {
    if (busy_ || !wayOpen_ || step_ < 1 || step_ >= StepCount() || !MayGoForward()) return false;
    bool open = false;
    {
        const BusyGuard guard(busy_);
        ErrorTrap trap("CmdNext_Click");
        // A step in a window of its own is under way while the wizard still shows the page before it.
        const bool inWindow = !pages_.at(step_);
        if (inWindow) MarkStep(step_ + 1);
        trap.Try([&] { open = GoForward(step_ + 1); });
        if (inWindow && !open) MarkStep(step_);
    }
    ClearProgress();
    SetStatus({});
    if (!open || step_ == kDoneStep) return false;
    EnterStep(step_ + 1);
    return true;
}

void WizardFrame::CmdNext_Click() {
    Forward();
}

void WizardFrame::CmdBack_Click() {
    if (busy_ || !wayOpen_ || step_ < 2 || step_ > StepCount()) return;
    {
        const BusyGuard guard(busy_);
        SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
        ErrorTrap trap("CmdBack_Click");
        trap.Try([&] { GoBack(step_, step_ - 1); });
    }
    SetStatus({});
    EnterStep(step_ - 1);
}

void WizardFrame::CmdFinish_Click() {
    if (busy_ || !MayFinish()) return;
    if (step_ < StepCount()) {
        while (Forward()) {
        }
        return;
    }
    bool finished = false;
    {
        const BusyGuard guard(busy_);
        ErrorTrap trap("CmdFinish_Click");
        trap.Try([&] { finished = Finish(); });
    }
    ClearProgress();
    SetStatus({});
    if (finished) done(QDialog::Accepted);
}

void WizardFrame::CmdCancel_Click() {
    if (busy_) return;
    const QString question = CancelQuestion();
    if (!question.isEmpty() && AskBeforeLoss(question, MessageType::YesNo, title_) != MessageCode::Yes) return;
    done(QDialog::Rejected);
}

void WizardFrame::done(int result) {
    step_ = kDoneStep;
    {
        const BusyGuard guard(busy_);
        ErrorTrap trap("Form_Unload");
        trap.Try([&] { EndWizard(); });
    }
    QDialog::done(result);
}

void WizardFrame::SetStatus(const QString& text) {
    ui_->StatusBar1->setText(text);
    ui_->StatusBar1->repaint();
}

void WizardFrame::SetMainProgress(int percent) {
    ui_->PB_Main->setVisible(true);
    ui_->PB_Main->setValue(percent);
    ui_->PB_Main->repaint();
}

void WizardFrame::SetChildProgress(int percent) {
    ui_->PB_Child->setVisible(true);
    ui_->PB_Child->setValue(percent);
    ui_->PB_Child->repaint();
}

void WizardFrame::ClearProgress() {
    for (QProgressBar* bar : {ui_->PB_Main, ui_->PB_Child}) {
        QSizePolicy place = bar->sizePolicy();
        place.setRetainSizeWhenHidden(true);
        bar->setSizePolicy(place);
        bar->setRange(0, 100);
        bar->setValue(0);
        bar->setVisible(false);
    }
}

void WizardFrame::SetWayOpen(bool open) {
    wayOpen_ = open;
    ShowStep();
}

} // namespace tessaro
