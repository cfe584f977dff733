#include "controls/WorkProgress.h"

#include "controls/Captions.h"
#include "session/Frame.h"
#include "session/Strings.h"

#include <QLabel>
#include <QLocale>
#include <QPushButton>

namespace tessaro {

namespace {

constexpr int kLookEvery = 40; ///< milliseconds
constexpr int kSteps = 1000;
constexpr int kWidth = 360;

} // namespace

WorkProgress::WorkProgress(const QString& text, QWidget* parent)
    : QProgressDialog(parent), text_(text),
      cmdCancel_(new QPushButton(PlainText(QStringLiteral("CANCEL BUTTON")), this)) {
    setObjectName(QStringLiteral("WorkProgress"));
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(PlainText(QStringLiteral("TS_OptionView")));
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    setLabel(label);
    setCancelButton(cmdCancel_);
    setMinimumDuration(std::numeric_limits<int>::max()); // Show decides, by the time alone
    setAutoReset(false);
    setAutoClose(false);
    setMinimumWidth(kWidth);
    SetFormFonts(this);
    reset();
    clock_.start();
}

WorkProgress::~WorkProgress() {
    if (watch_) TheFrame().SetBusy(true);
}

bool WorkProgress::Show(qint64 done, qint64 total) {
    if (clock_.elapsed() >= nextLook_) {
        nextLook_ = clock_.elapsed() + kLookEvery;
        if (total > 0) TheFrame().SetProgress(static_cast<int>(100 * done / total));
        if (watch_ || clock_.elapsed() >= FirstShown) ShowRows(done, total);
        if (!watch_ && clock_.elapsed() >= FirstShown) ShowWindow();
    }
    return !(watch_ && watch_->Asked()) && !wasCanceled();
}

void WorkProgress::ShowRows(qint64 done, qint64 total) {
    const QLocale locale = QLocale::system();
    setMaximum(total > 0 ? kSteps : 0);
    setValue(total > 0 ? static_cast<int>(kSteps * done / total) : 0);
    QString rows = GetText(total > 0 ? QStringLiteral("TS_RowsDone") : QStringLiteral("TS_FilterCounting"));
    rows.replace(QLatin1String("%1"), locale.toString(done)).replace(QLatin1String("%2"), locale.toString(total));
    setLabelText(text_ + QLatin1Char('\n') + rows);
}

void WorkProgress::ShowWindow() {
    TheFrame().SetBusy(false);
    show();
    watch_.emplace(*this, cmdCancel_);
}

} // namespace tessaro
