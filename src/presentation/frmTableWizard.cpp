#include "presentation/frmTableWizard.h"

#include "controls/Captions.h"
#include "controls/OfficeErrors.h"
#include "controls/OfficeHost.h"
#include "presentation/ColorRangesPanel.h"
#include "presentation/Preview.h"
#include "presentation/RowsColumnsPage.h"
#include "presentation/TableOptionsPage.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QEvent>
#include <QFileInfo>
#include <QStackedWidget>

namespace tessaro {

namespace {

enum Steps { RowsAndColumns = 1, Options, Preview, Save };

} // namespace

frmTableWizard::frmTableWizard(SavePresentation save, QWidget* parent)
    : WizardFrame(parent), save_(std::move(save)), rowsColumns_(new RowsColumnsPage(WizardKind::Table)),
      options_(new TableOptionsPage), colors_(new ColorRangesPanel), optionsStack_(new QStackedWidget),
      fraExcel_(new OfficeHost) {
    setObjectName(QStringLiteral("frmTableWizard"));
    fraExcel_->setObjectName(QStringLiteral("fraExcel"));
    optionsStack_->addWidget(options_);
    optionsStack_->addWidget(colors_);
    SetTitle(PlainText(QStringLiteral("Table")));
    AddStep(rowsColumns_, QStringLiteral("TS_PageRowsAndColumns"));
    AddStep(optionsStack_, QStringLiteral("TS_PageTableOptions"));
    AddStep(fraExcel_, QStringLiteral("TS_PagePreview"));
    AddStep(nullptr, QStringLiteral("TS_PageSaveAs"));
    connect(rowsColumns_, &RowsColumnsPage::ArrangementChanged, this, [this] { options_->SetSorting({}, {}); });
    connect(options_, &TableOptionsPage::SortRequested, this, &frmTableWizard::ChooseSort);
    connect(options_, &TableOptionsPage::ColorRequested, this, &frmTableWizard::OpenColors);
    connect(colors_, &ColorRangesPanel::Kept, this, [this] {
        ranges_ = colors_->Ranges();
        CloseColors();
    });
    connect(colors_, &ColorRangesPanel::Dropped, this, &frmTableWizard::CloseColors);
    Form_Load();
}

void frmTableWizard::Form_Load() {
    const ErrorTrap trap("Form_Load");
    SetFormFonts(this);
    rowsColumns_->SetFormCaptions();
    options_->SetFormCaptions();
    preview::StartSpreadsheet();
    RowsColumns first;
    first.SetDefaultRowsColumns();
    rowsColumns_->SetArrangement(first);
    Begin();
}

bool frmTableWizard::GoForward(int step) {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    switch (step) {
    case Options:
        return LeaveRowsAndColumns();
    case Preview:
        return ShowPreview();
    case Save:
        return SaveAs();
    default:
        return false;
    }
}

void frmTableWizard::GoBack(int step) {
    if (step == Preview) fraExcel_->CloseHostedExcel();
}

bool frmTableWizard::LeaveRowsAndColumns() {
    if (rowsColumns_->Arrangement().Rows().empty() && !options_->AddsColor()) {
        ShowMessage(QStringLiteral("253"));
        return false;
    }
    if (!options_->TitleChanged()) FillDefaultTitles();
    return true;
}

// The first two fields that the whole selection has just one value of.
void frmTableWizard::FillDefaultTitles() {
    const QStringList titles = SingleValues(2);
    options_->SuggestTitles(titles.value(0), titles.value(1));
}

bool frmTableWizard::NeedRanges() {
    if (ranges_.records.empty()) ranges_.records = InitColorRanges();
    return !ranges_.records.empty();
}

bool frmTableWizard::ShowPreview() {
    TableOptions options = options_->Options();
    if (options.addColor && NeedRanges()) options.ranges = ranges_;
    RowsColumns arrangement = rowsColumns_->Arrangement();
    const WizardProgress progress{[this](int percent) { SetMainProgress(percent); },
                                  [this](int percent) { SetChildProgress(percent); },
                                  [this](const QString& key) { SetStatus(PlainText(key)); }};
    ShowOutcome outcome;
    try {
        outcome = ShowXLS(arrangement, options, progress);
    } catch (const office::Error& error) {
        ShowOfficeError(error, "CmdNext_Click");
        return false;
    }
    if (!(arrangement == rowsColumns_->Arrangement())) {
        const SortOrder sort = options_->Sorting();
        rowsColumns_->SetArrangement(arrangement);
        options_->SetSorting(sort, {});
    }
    if (!preview::Tell(outcome)) return false;
    workbookFile_ = outcome.WorkbookFile;
    ClearProgress();
    preview::Show(*fraExcel_, *this, workbookFile_);
    return true;
}

bool frmTableWizard::SaveAs() {
    if (fraExcel_->IsOpen() && !fraExcel_->Save()) return false;
    if (!save_) return false;
    const bool over = save_({QLatin1Char('T'), QFileInfo(workbookFile_).completeBaseName(),
                             QFileInfo(workbookFile_).completeBaseName(), StepCaption(Save)},
                            this);
    if (over) done(QDialog::Accepted);
    return false; // otherwise the preview stays
}

void frmTableWizard::ChooseSort() {
    ErrorTrap trap("CmdSort_Click");
    RowsColumns arrangement = rowsColumns_->Arrangement();
    PivotTable table;
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    const ShowOutcome outcome = PrepareTable(WizardKind::Table, arrangement, table, {});
    SetStatus({});
    if (!preview::Tell(outcome)) return;
    const QStringList heads = preview::Heads(table);
    SortChoice choice(heads, options_->Sorting(), this);
    if (choice.exec() == QDialog::Accepted) options_->SetSorting(choice.Order(), heads.value(choice.Order().column));
}

void frmTableWizard::OpenColors() {
    const ErrorTrap trap("cmdAddColor_Click");
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    const bool any = NeedRanges();
    SetStatus({});
    if (!any) {
        ShowMessage(QStringLiteral("256"));
        return;
    }
    colors_->SetRanges(ranges_);
    optionsStack_->setCurrentWidget(colors_);
    SetWayOpen(false);
    ShowStep(QStringLiteral("TS_PageApplyColor"));
}

void frmTableWizard::CloseColors() {
    optionsStack_->setCurrentWidget(options_);
    SetWayOpen(true);
}

void frmTableWizard::EndWizard() {
    fraExcel_->CloseHostedExcel();
    GiveTimeFor(0);
}

// Form_Resize: the spreadsheet's bars come with a maximised form.
void frmTableWizard::changeEvent(QEvent* event) {
    WizardFrame::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) fraExcel_->SetToolBars(isMaximized());
}

} // namespace tessaro
