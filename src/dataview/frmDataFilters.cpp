#include "dataview/frmDataFilters.h"

#include "controls/Captions.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Strings.h"
#include "ui_frmDataFilters.h"

#include <QLocale>

namespace tessaro {

namespace {

constexpr int kPause = 300; ///< milliseconds

/// A number as the user writes it, or as the data does.
bool ReadNumber(const QString& text, double& number) {
    bool good = false;
    number = QLocale::system().toDouble(text.trimmed(), &good);
    if (!good) number = QLocale::c().toDouble(text.trimmed(), &good);
    return good && std::isfinite(number);
}

} // namespace

frmDataFilters::frmDataFilters(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmDataFilters>()) {
    ui_->setupUi(this);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("TS_FiltersCaption")));
    SetCaption(ui_->chkMostRecent, QStringLiteral("TS_FilterRecent"));
    SetCaption(ui_->chkValueRange, QStringLiteral("TS_FilterRange"));
    SetCaption(ui_->lblTo, QStringLiteral("TS_FilterTo"));
    SetCaption(ui_->chkMissing, QStringLiteral("TS_FilterMissing"));
    SetCaption(ui_->cmdOK, QStringLiteral("OK BUTTON"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    ui_->txtFrom->setAccessibleName(PlainText(QStringLiteral("TS_FilterRange")));
    ui_->txtTo->setAccessibleName(PlainText(QStringLiteral("TS_FilterTo")));
    tmrCount_.setSingleShot(true);
    tmrCount_.setInterval(kPause);
    connect(&tmrCount_, &QTimer::timeout, this, &frmDataFilters::CountRows);
    for (QCheckBox* box : {ui_->chkMostRecent, ui_->chkValueRange, ui_->chkMissing})
        connect(box, &QCheckBox::toggled, this, &frmDataFilters::ShowChoice);
    for (QLineEdit* field : {ui_->txtFrom, ui_->txtTo})
        connect(field, &QLineEdit::textEdited, this, &frmDataFilters::ShowChoice);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmDataFilters::~frmDataFilters() = default;

void frmDataFilters::SetFilters(const DataFilters& filters) {
    filters_ = filters;
    const QSignalBlocker recent(ui_->chkMostRecent);
    const QSignalBlocker range(ui_->chkValueRange);
    const QSignalBlocker missing(ui_->chkMissing);
    ui_->chkMostRecent->setChecked(filters.MostRecentOn);
    ui_->chkValueRange->setChecked(filters.ValueRangeOn);
    ui_->chkMissing->setChecked(filters.MissingDataOn);
    const QLocale locale = QLocale::system();
    ui_->txtFrom->setText(locale.toString(filters.DataValueFrom, 'g', QLocale::FloatingPointShortest));
    ui_->txtTo->setText(locale.toString(filters.DataValueTo, 'g', QLocale::FloatingPointShortest));
    ShowChoice();
}

void frmDataFilters::ShowChoice() {
    const bool missing = ui_->chkMissing->isChecked();
    // A cell without a value has no latest period and no place in a range.
    ui_->chkMostRecent->setEnabled(!missing);
    ui_->chkValueRange->setEnabled(!missing);
    for (QWidget* part :
         {static_cast<QWidget*>(ui_->txtFrom), static_cast<QWidget*>(ui_->txtTo), static_cast<QWidget*>(ui_->lblTo)})
        part->setEnabled(!missing && ui_->chkValueRange->isChecked());
    ui_->lblRowsStay->clear();
    ui_->cmdOK->setEnabled(ReadControls());
    if (ui_->cmdOK->isEnabled()) tmrCount_.start();
}

bool frmDataFilters::ReadControls() {
    filters_.MissingDataOn = ui_->chkMissing->isChecked();
    filters_.MostRecentOn = !filters_.MissingDataOn && ui_->chkMostRecent->isChecked();
    filters_.ValueRangeOn = !filters_.MissingDataOn && ui_->chkValueRange->isChecked();
    if (!filters_.ValueRangeOn) return true;
    if (!ReadNumber(ui_->txtFrom->text(), filters_.DataValueFrom) ||
        !ReadNumber(ui_->txtTo->text(), filters_.DataValueTo)) {
        Tell(GetText(QStringLiteral("TS_FilterBadNumber")), false);
        return false;
    }
    if (filters_.DataValueFrom > filters_.DataValueTo) {
        Tell(GetText(QStringLiteral("TS_FilterOrder")), false);
        return false;
    }
    return true;
}

void frmDataFilters::CountRows() {
    const ErrorTrap trap("CountFilteredRows");
    TheFrame().SetBusy(true);
    const std::optional<qint64> rows = CountFilteredRows(filters_);
    TheFrame().SetBusy(false);
    if (!rows) {
        Tell(GetText(QStringLiteral("TS_FilterUnreadable")), false);
    } else if (*rows == 0) {
        Tell(GetText(QStringLiteral("TS_FilterNothingStays")), false);
    } else {
        Tell(GetText(QStringLiteral("TS_FilterRowsStay"))
                 .replace(QStringLiteral("%1"), QLocale::system().toString(*rows)),
             true);
    }
}

void frmDataFilters::Tell(const QString& text, bool good) {
    ui_->lblRowsStay->setText(text);
    ui_->cmdOK->setEnabled(good);
}

} // namespace tessaro
