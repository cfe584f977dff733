#include "controls/OfficeHost.h"

#include "controls/OfficeErrors.h"
#include "controls/Theme.h"
#include "office/HostedFrame.h"
#include "session/ErrorSink.h"
#include "session/Strings.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPointer>

#include <xcb/xcb.h>

namespace tessaro {

namespace {

/// The one place that shows a workbook, and the one that shows slides.
QPointer<OfficeHost> workbookHost;
QPointer<OfficeHost> slidesHost;

} // namespace

OfficeHost::OfficeHost(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(160, 120);
    connect(&office::SpreadsheetApplication::Hosted(), &office::SpreadsheetApplication::Lost, this,
            &OfficeHost::OfficeLost);
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

bool OfficeHost::Fail(const QString& text, const QString& logged) {
    LogNote(QStringLiteral("OpenHostedExcel: ") + logged);
    CloseHostedExcel(false);
    errorText_ = text;
    SetHint(text);
    return false;
}

template <class Opening> bool OfficeHost::Show(Opening&& opening) {
    CloseHostedExcel();
    errorText_.clear();
    SetHint(GetText(QStringLiteral("TS_OfficeOpening")));
    repaint();
    place_ = new QWidget(this);
    place_->setAttribute(Qt::WA_DontCreateNativeAncestors);
    place_->setAttribute(Qt::WA_NativeWindow);
    place_->setGeometry(rect());
    place_->show();
    try {
        frame_ = std::make_unique<office::HostedFrame>(place_->winId(), PlaceSize());
        opening(*frame_);
    } catch (const office::Error& error) {
        return Fail(OfficeText(error), QString::fromUtf8(error.what()));
    }
    FitExcelToContainer();
    qApp->installEventFilter(this);
    SetHint({});
    return true;
}

bool OfficeHost::ShowWorkbook(const QString& file) {
    if (!CanHost())
        return Fail(GetText(QStringLiteral("TS_OfficeNoDisplay")).replace(QStringLiteral("%1"), file),
                    QStringLiteral("no X11 display"));
    if (workbookHost && workbookHost != this) workbookHost->CloseHostedExcel();
    workbookHost = this;
    return Show([&](office::HostedFrame& frame) {
        book_ = frame.ShowWorkbook(file);
        if (toolBars_) frame.SetToolBars(true);
    });
}

bool OfficeHost::ShowSlides(const QString& file) {
    if (!CanHost())
        return Fail(GetText(QStringLiteral("TS_OfficeNoDisplay")).replace(QStringLiteral("%1"), file),
                    QStringLiteral("no X11 display"));
    if (slidesHost && slidesHost != this) slidesHost->CloseHostedExcel();
    slidesHost = this;
    return Show([&](office::HostedFrame& frame) { slides_ = frame.ShowSlides(file); });
}

void OfficeHost::FitExcelToContainer() {
    if (!place_) return;
    place_->setGeometry(rect());
    if (frame_) frame_->SetSize(PlaceSize());
}

void OfficeHost::SetToolBars(bool shown) {
    if (toolBars_ == shown) return;
    toolBars_ = shown;
    if (!IsOpen()) return;
    try {
        frame_->SetToolBars(shown);
    } catch (const office::Error& error) {
        LogNote(QStringLiteral("SetToolBars: ") + QString::fromUtf8(error.what()));
    }
}

void OfficeHost::CloseHostedExcel(bool save) {
    qApp->removeEventFilter(this);
    try {
        if (save && book_.IsOpen() && book_.IsModified()) book_.Save();
    } catch (const office::Error& error) {
        ShowOfficeError(error, "CloseHostedExcel");
    }
    book_ = {};
    slides_ = {};
    frame_.reset();
    delete std::exchange(place_, nullptr);
    if (workbookHost == this) workbookHost = nullptr;
    if (slidesHost == this) slidesHost = nullptr;
}

bool OfficeHost::IsOpen() const {
    return book_.IsOpen() || slides_.IsOpen();
}

bool OfficeHost::Save() {
    try {
        book_.Save();
        return true;
    } catch (const office::Error& error) {
        errorText_ = OfficeText(error);
        LogNote(QStringLiteral("ActiveWorkbook.Save: ") + QString::fromUtf8(error.what()));
        return false;
    }
}

void OfficeHost::OfficeLost() {
    if (!frame_ || IsOpen()) return; // what is shown now may already be in the next process
    CloseHostedExcel(false);
    errorText_ = GetText(QStringLiteral("TS_OfficeLost"));
    LogNote(QStringLiteral("the process of the shown document has ended"));
    SetHint(errorText_);
    Q_EMIT Lost();
}

void OfficeHost::SetHint(const QString& text) {
    hint_ = text;
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
    painter.drawText(rect().adjusted(theme::Grid * 3, theme::Grid * 3, -theme::Grid * 3, -theme::Grid * 3),
                     Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

bool OfficeHost::eventFilter(QObject* watched, QEvent* event) {
    const bool takesKeyboard = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::FocusIn;
    if (takesKeyboard && frame_) {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && widget->window() == window() && widget != place_ && widget != this) TakeKeyboardBack();
    }
    return QWidget::eventFilter(watched, event);
}

// The hosted window would keep the keyboard: no window manager gives it to the parts of one window.
void OfficeHost::TakeKeyboardBack() {
    auto* display = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!display || !display->connection()) return;
    xcb_set_input_focus(display->connection(), XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(window()->winId()),
                        XCB_CURRENT_TIME);
    xcb_flush(display->connection());
}

} // namespace tessaro
