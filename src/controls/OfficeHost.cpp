#include "controls/OfficeHost.h"

#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/HostKeyboard.h"
#include "controls/OfficeErrors.h"
#include "controls/Printing.h"
#include "controls/Theme.h"
#include "office/HostedFrame.h"
#include "session/ErrorSink.h"
#include "session/Strings.h"

#include <QApplication>
#include <QEvent>
#include <QFileInfo>
#include <QFocusEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>

namespace tessaro {

namespace {

constexpr std::chrono::milliseconds kProbeInterval{2000};

/// The host that shows a workbook now, and the one that shows slides: one of each at most.
QPointer<OfficeHost> workbookHost;
QPointer<OfficeHost> slidesHost;

/// Makes `host` the one of its kind.
void TakeOver(QPointer<OfficeHost>& current, OfficeHost* host) {
    if (current && current != host) current->CloseHostedExcel();
    current = host;
}

} // namespace

OfficeHost::OfficeHost(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(160, 120);
    connect(&office::SpreadsheetApplication::Hosted(), &office::SpreadsheetApplication::Lost, this,
            &OfficeHost::OfficeLost);
    probe_.setInterval(kProbeInterval);
    connect(&probe_, &QTimer::timeout, this, [] { office::SpreadsheetApplication::Hosted().Probe(); });
}

OfficeHost::~OfficeHost() {
    CloseHostedExcel();
}

bool OfficeHost::CanHost() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

QSize OfficeHost::PlaceSize() const {
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

bool OfficeHost::Fail(const office::Error& error) {
    ReportError(error, QStringLiteral("OpenHostedExcel"));
    CloseHostedExcel(false);
    reason_ = [error] { return OfficeText(error); };
    ShowReason();
    return false;
}

bool OfficeHost::FailWithoutDisplay(const QString& file) {
    Fail(office::Error(office::Failure::Start, QStringLiteral("no X11 display")));
    reason_ = [file] { return GetText(QStringLiteral("TS_OfficeNoDisplay")).replace(QStringLiteral("%1"), file); };
    ShowReason();
    return false;
}

void OfficeHost::MakePlace() {
    place_ = new QWidget(this);
    place_->setAttribute(Qt::WA_DontCreateNativeAncestors);
    place_->setAttribute(Qt::WA_NativeWindow);
    place_->setGeometry(rect());
    keyboard_ =
        std::make_unique<HostKeyboard>(place_->winId(), window()->winId(), [this](bool forwards) { Leave(forwards); });
}

template <class Opening> bool OfficeHost::Show(Opening&& opening) {
    CloseHostedExcel();
    dead_ = {};
    reason_ = {};
    SetHint(GetText(QStringLiteral("TS_OfficeOpening")));
    repaint();
    MakePlace();
    try {
        const QScopedValueRollback busy(busy_, true);
        shown_.frame = std::make_unique<office::HostedFrame>(place_->winId(), PlaceSize(), palette());
        opening(*shown_.frame);
        if (!IsOpen()) throw office::Error(office::Failure::Lost, QStringLiteral("the process ended while it opened"));
    } catch (const office::Error& error) {
        return Fail(error);
    }
    // Shown only now; until here the hint is seen instead of an empty white window.
    place_->show();
    FitExcelToContainer();
    setFocusPolicy(Qt::StrongFocus);
    qApp->installEventFilter(this);
    probe_.start();
    SetHint({});
    return true;
}

bool OfficeHost::ShowWorkbook(const QString& file) {
    if (!CanHost()) return FailWithoutDisplay(file);
    TakeOver(workbookHost, this);
    return Show([&](office::HostedFrame& frame) {
        shown_.book = frame.ShowWorkbook(file);
        workbookHost = this;
        if (toolBars_) frame.SetToolBars(true);
    });
}

bool OfficeHost::ShowSlides(const QString& file) {
    if (!CanHost()) return FailWithoutDisplay(file);
    TakeOver(slidesHost, this);
    return Show([&](office::HostedFrame& frame) {
        shown_.slides = frame.ShowSlides(file);
        slidesHost = this;
        if (toolBars_) frame.SetToolBars(true);
        // The program's own dialog would show neither our file name nor the right file type.
        frame.OnSave([this](bool asNew) {
            QMetaObject::invokeMethod(
                this, [this, asNew] { Q_EMIT SaveWanted(asNew); }, Qt::QueuedConnection);
        });
    });
}

void OfficeHost::FitExcelToContainer() {
    if (!place_) return;
    place_->setGeometry(rect());
    if (shown_.frame) shown_.frame->SetSize(PlaceSize());
}

bool OfficeHost::SetPrintPreview(bool shown) {
    if (!IsOpen()) return false;
    try {
        shown_.frame->SetPrintPreview(shown);
        return true;
    } catch (const office::Error& error) {
        reason_ = [error] { return OfficeText(error); };
        ReportError(error, QStringLiteral("PrintPreview"));
        return false;
    }
}

bool OfficeHost::IsPrintPreview() {
    try {
        return IsOpen() && shown_.frame->IsPrintPreview();
    } catch (const office::Error& error) {
        ReportError(error, QStringLiteral("PrintPreview"));
        return false;
    }
}

void OfficeHost::SetToolBars(bool shown) {
    if (toolBars_ == shown) return;
    toolBars_ = shown;
    if (!IsOpen()) return;
    try {
        shown_.frame->SetToolBars(shown);
    } catch (const office::Error& error) {
        ReportError(error, QStringLiteral("SetToolBars"));
    }
}

// Where the file can't be written, the user may name another one, again and again, or give the edits up.
void OfficeHost::KeepEdits() {
    QString file = shown_.book.FileName();
    try {
        if (shown_.frame) shown_.frame->GetReadyToSave();
        if (!shown_.book.IsOpen() || !shown_.book.IsModified()) return;
    } catch (const office::Error& error) {
        return ShowOfficeError(error, "CloseHostedExcel");
    }
    while (!file.isEmpty() && shown_.book.IsOpen()) {
        try {
            return shown_.book.SaveAs(file);
        } catch (const office::Error& error) {
            ShowOfficeError(error, "CloseHostedExcel");
        }
        if (shown_.book.IsOpen())
            file = AskForNewFile(window(), {PlainText(QStringLiteral("TS_PageSaveAs")),
                                            {},
                                            PlainText(QStringLiteral("TS_FilterWorkbook")) + QStringLiteral(" (*.xls)"),
                                            QFileInfo(file).fileName()});
    }
}

void OfficeHost::CloseHostedExcel(bool save) {
    const QScopedValueRollback busy(busy_, true);
    qApp->removeEventFilter(this);
    probe_.stop();
    setFocusPolicy(Qt::NoFocus);
    if (shown_.frame) shown_.frame->EndDialogs();
    if (save) KeepEdits();
    if (shown_.frame) shown_.frame->EndOnSave();
    shown_ = {};
    const bool wasInside = keyboard_ && keyboard_->IsInside();
    if (wasInside) TakeKeyboard();
    keyboard_.reset();
    delete std::exchange(place_, nullptr);
    if (workbookHost == this) workbookHost = nullptr;
    if (slidesHost == this) slidesHost = nullptr;
}

bool OfficeHost::IsOpen() const {
    return shown_.book.IsOpen() || shown_.slides.IsOpen();
}

bool OfficeHost::HasEdits() {
    try {
        if (!shown_.book.IsOpen()) return false;
        if (shown_.frame) shown_.frame->TakeOverInput();
        return shown_.book.IsModified();
    } catch (const office::Error& error) {
        ReportError(error, QStringLiteral("ActiveWorkbook.Saved"));
        return false;
    }
}

bool OfficeHost::Save() {
    try {
        if (shown_.frame) shown_.frame->GetReadyToSave();
        shown_.book.Save();
        return true;
    } catch (const office::Error& error) {
        reason_ = [error] { return OfficeText(error); };
        ReportError(error, QStringLiteral("ActiveWorkbook.Save"));
        return false;
    }
}

void OfficeHost::Print() {
    const auto place = AskForPrinter(window());
    if (!place || !shown_.book.IsOpen()) return;
    try {
        if (!place->pdfFile.isEmpty())
            shown_.book.ExportPdf(place->pdfFile);
        else
            shown_.book.Print(place->printer);
    } catch (const office::Error& error) {
        ShowOfficeError(error, "cmdPrint_Click");
    }
}

void OfficeHost::TakeKeyboard() {
    if (keyboard_ && window()->isVisible()) keyboard_->TakeBack();
}

void OfficeHost::OfficeLost(bool hung) {
    if (busy_ || !shown_.frame || IsOpen()) return; // a workbook shown since then may belong to the next process
    dead_ = std::exchange(shown_, {});
    Fail(hung ? office::Error(office::Failure::TimedOut, QStringLiteral("the process of the shown document hung"))
              : office::Error(office::Failure::Lost, QStringLiteral("the process of the shown document has ended")));
    Q_EMIT Lost();
}

QString OfficeHost::ErrorText() const {
    return reason_ ? reason_() : QString();
}

void OfficeHost::ShowReason() {
    SetHint(ErrorText());
    showsReason_ = true;
}

void OfficeHost::SetFormCaptions() {
    if (showsReason_) ShowReason();
}

void OfficeHost::SetHint(const QString& text) {
    hint_ = text;
    showsReason_ = false;
    setAccessibleDescription(text);
    update();
}

void OfficeHost::resizeEvent(QResizeEvent*) {
    FitExcelToContainer();
}

void OfficeHost::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    if (hint_.isEmpty()) return;
    painter.setPen(theme::MutedText());
    painter.drawText(rect().adjusted(theme::kGrid * 3, theme::kGrid * 3, -theme::kGrid * 3, -theme::kGrid * 3),
                     Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

void OfficeHost::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    const bool byKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKey && keyboard_) keyboard_->Enter();
}

void OfficeHost::Leave(bool forwards) {
    keyboard_->TakeBack();
    setFocus(Qt::OtherFocusReason);
    focusNextPrevChild(forwards);
}

bool OfficeHost::eventFilter(QObject* watched, QEvent* event) {
    const bool pressed = event->type() == QEvent::MouseButtonPress;
    if ((pressed || event->type() == QEvent::FocusIn) && keyboard_ && keyboard_->IsInside()) {
        auto* widget = qobject_cast<QWidget*>(watched);
        const bool ours = widget && widget->window() == window() && widget != place_ && widget != this;
        // When the form is activated again it gives the focus to its own field, but the user was in the foreign window.
        const bool back = !pressed && static_cast<QFocusEvent*>(event)->reason() == Qt::ActiveWindowFocusReason;
        if (ours && back)
            keyboard_->Enter();
        else if (ours)
            keyboard_->TakeBack();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tessaro
