#include "dataview/frmDataFilters.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "session/DisplayValue.h"
#include "session/Frame.h"
#include "session/StatementWatch.h"
#include "session/Strings.h"
#include "ui_frmDataFilters.h"

#include <QLocale>

#include <algorithm>
#include <limits>
#include <utility>

namespace tessaro {

namespace {

constexpr int kRowsPerSlice = 4000; ///< a few milliseconds of reading between two looks at the keyboard

QString WithNumbers(const char* key, std::initializer_list<QString> numbers) {
    QString text = GetText(QLatin1String(key));
    int place = 0;
    for (const QString& number : numbers)
        text.replace(QStringLiteral("%") + QString::number(++place), number);
    return text;
}

QString Shown(qint64 number) {
    return QLocale::system().toString(number);
}

} // namespace

frmDataFilters::frmDataFilters(const DataFilters& filters, qint64 hiddenRows, QWidget* parent)
    : QDialog(parent), before_(filters), hiddenRows_(hiddenRows), ui_(std::make_unique<Ui::frmDataFilters>()) {
    ui_->setupUi(this);
    if (filters.ValueRangeOn) {
        ui_->txtFrom->setText(ShownValue(filters.DataValueFrom));
        ui_->txtTo->setText(ShownValue(filters.DataValueTo));
    }
    ui_->chkMostRecent->setChecked(filters.MostRecentOn);
    ui_->chkMissing->setChecked(filters.MissingDataOn);
    SetFormFonts(this);
    SetFormCaptions();
    ConnectControls();
    counter_.Start();
    reading_.start(0);
    ShowState();
}

frmDataFilters::~frmDataFilters() = default;

void frmDataFilters::SetFormCaptions() {
    setWindowTitle(PlainText(QStringLiteral("TS_FiltersCaption")));
    SetCaption(ui_->lblValueRange, QStringLiteral("TS_FilterRange"));
    SetCaption(ui_->lblTo, QStringLiteral("TS_FilterTo"));
    SetCaption(ui_->chkMostRecent, QStringLiteral("TS_FilterRecent"));
    SetCaption(ui_->chkMissing, QStringLiteral("TS_FilterMissing"));
    SetCaption(ui_->cmdReset, QStringLiteral("TS_NoFilters"));
    SetCaption(ui_->cmdOK, QStringLiteral("TS_Apply"));
    SetCaption(ui_->CmdCancel, QStringLiteral("CANCEL BUTTON"));
    ui_->lblValueRange->setBuddy(ui_->txtFrom);
    ui_->lblTo->setBuddy(ui_->txtTo);
    ui_->txtFrom->setAccessibleName(PlainText(QStringLiteral("TS_FilterRange")));
    ui_->txtTo->setAccessibleName(PlainText(QStringLiteral("TS_FilterTo")));
    QFont bold = ui_->lblRowsStay->font();
    bold.setBold(true);
    ui_->lblRowsStay->setFont(bold);
    QPalette muted = ui_->lblExtent->palette();
    muted.setColor(QPalette::WindowText, theme::MutedText());
    ui_->lblExtent->setPalette(muted);
}

void frmDataFilters::ConnectControls() {
    connect(ui_->txtFrom, &QLineEdit::textChanged, this, &frmDataFilters::ShowState);
    connect(ui_->txtTo, &QLineEdit::textChanged, this, &frmDataFilters::ShowState);
    connect(ui_->chkMostRecent, &QCheckBox::toggled, this, &frmDataFilters::chkMostRecent_Click);
    connect(ui_->chkMissing, &QCheckBox::toggled, this, &frmDataFilters::ShowState);
    connect(ui_->cmdReset, &QPushButton::clicked, this, &frmDataFilters::cmdReset_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmDataFilters::cmdOK_Click);
    connect(ui_->CmdCancel, &QPushButton::clicked, this, &frmDataFilters::reject);
    connect(&reading_, &QTimer::timeout, this, &frmDataFilters::ReadOn);
}

// The values are read between the events, so that typing goes on meanwhile.
void frmDataFilters::ReadOn() {
    if (counter_.ReadSome(kRowsPerSlice)) {
        ShowState();
        return;
    }
    reading_.stop();
    chkMostRecent_Click();
}

void frmDataFilters::chkMostRecent_Click() {
    if (ui_->chkMostRecent->isChecked() && counter_.isComplete() && !counter_.KnowsMostRecent()) {
        const WaitPointer wait;
        const StatementWatch watch;
        counter_.ReadMostRecent();
        if (watch.Stopped()) return ui_->chkMostRecent->setChecked(false);
    }
    ShowState();
}

void frmDataFilters::cmdReset_Click() {
    ui_->txtFrom->clear();
    ui_->txtTo->clear();
    ui_->chkMostRecent->setChecked(false);
    ui_->chkMissing->setChecked(false);
    ui_->txtFrom->setFocus();
}

void frmDataFilters::cmdOK_Click() {
    while (counter_.ReadSome(kRowsPerSlice)) {
    }
    const StatementWatch watch;
    if (ui_->chkMostRecent->isChecked()) counter_.ReadMostRecent();
    if (watch.Stopped()) return ui_->chkMostRecent->setChecked(false);
    ShowState();
    if (ui_->cmdOK->isEnabled()) accept();
}

DataFilters frmDataFilters::Typed() const {
    const auto from = NumberTyped(ui_->txtFrom->text());
    const auto to = NumberTyped(ui_->txtTo->text());
    DataFilters filters;
    filters.MostRecentOn = ui_->chkMostRecent->isChecked();
    filters.MissingDataOn = ui_->chkMissing->isChecked();
    filters.ValueRangeOn = from || to;
    if (!filters.ValueRangeOn) return filters;
    filters.DataValueFrom = from.value_or(std::numeric_limits<double>::lowest());
    filters.DataValueTo = to.value_or(std::numeric_limits<double>::max());
    return filters;
}

DataFilters frmDataFilters::Filters() const {
    DataFilters filters = Typed();
    const auto extent = counter_.Extent();
    if (!filters.ValueRangeOn || !extent) return filters;
    // An open bound shows as a number that means something.
    if (ui_->txtFrom->text().trimmed().isEmpty()) filters.DataValueFrom = std::min(extent->first, filters.DataValueTo);
    if (ui_->txtTo->text().trimmed().isEmpty()) filters.DataValueTo = std::max(extent->second, filters.DataValueFrom);
    return filters;
}

bool frmDataFilters::TooManyMissing() const {
    return counter_.isComplete() && counter_.MissingCells() > kMostMissingCells;
}

std::optional<QString> frmDataFilters::Problem() const {
    for (const QLineEdit* field : {ui_->txtFrom, ui_->txtTo}) {
        const QString text = field->text().trimmed();
        if (!text.isEmpty() && !NumberTyped(text)) return WithNumbers("TS_NotANumber", {text});
    }
    const DataFilters typed = Typed();
    if (typed.ValueRangeOn && typed.DataValueFrom > typed.DataValueTo) return GetText(QStringLiteral("TS_FilterOrder"));
    if (typed.MissingDataOn && TooManyMissing())
        return WithNumbers("TS_TooManyMissing", {Shown(counter_.MissingCells()), Shown(kMostMissingCells)});
    if (typed.AnyOn() && counter_.RowsLeft(typed) == 0) return GetText(QStringLiteral("TS_FilterNothingStays"));
    return std::nullopt;
}

QString frmDataFilters::RowsText() const {
    DataFilters ofValues = Typed();
    const bool withCells = std::exchange(ofValues.MissingDataOn, false);
    const auto left = counter_.RowsLeft(ofValues);
    if (!left) return {};
    const QString rows = Shown(*left - RowsStillHidden());
    const QString total = Shown(counter_.TotalRows() - RowsStillHidden());
    return withCells ? WithNumbers("TS_FilterRowsAndCells", {rows, total, Shown(counter_.MissingCells())})
                     : WithNumbers("TS_FilterRowsStay", {rows, total});
}

void frmDataFilters::ShowState() {
    const std::optional<QString> problem = Problem();
    const QString rows = RowsText();
    ui_->cmdOK->setEnabled(!problem);
    ui_->lblRowsStay->setText(rows);
    QString note;
    if (rows.isEmpty())
        note = WithNumbers("TS_FilterCounting", {Shown(counter_.TotalRows())});
    else if (hiddenRows_ > RowsStillHidden())
        note = WithNumbers("TS_FilterHiddenBack", {Shown(hiddenRows_)});
    ui_->lblProblem->setText(InReadingOrder(problem.value_or(note)));
    const auto extent = counter_.Extent();
    ui_->lblExtent->setText(extent ? WithNumbers("TS_ValuesFromTo", {InOnePiece(ShownValue(extent->first)),
                                                                     InOnePiece(ShownValue(extent->second))})
                                   : QString());
}

} // namespace tessaro
