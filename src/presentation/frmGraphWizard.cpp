#include "presentation/frmGraphWizard.h"

#include "controls/Captions.h"
#include "controls/OfficeErrors.h"
#include "controls/OfficeHost.h"
#include "presentation/GraphOptionsPage.h"
#include "presentation/GraphWorkbook.h"
#include "presentation/Preview.h"
#include "presentation/RowsColumnsPage.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"

#include <QEvent>
#include <QFileInfo>

namespace tessaro {

namespace {

enum Steps { Axes = 1, Options, Preview, Save };

} // namespace

frmGraphWizard::frmGraphWizard(SavePresentation save, QWidget* parent)
    : WizardFrame(parent), save_(std::move(save)), axes_(new RowsColumnsPage(WizardKind::Graph)),
      options_(new GraphOptionsPage), fraExcel_(new OfficeHost) {
    setObjectName(QStringLiteral("frmGraphWizard"));
    fraExcel_->setObjectName(QStringLiteral("fraExcel"));
    options_->setObjectName(QStringLiteral("picStep2"));
    SetTitle(PlainText(QStringLiteral("Graph")));
    AddStep(axes_, QStringLiteral("TS_PageAxes"));
    AddStep(options_, QStringLiteral("TS_PageGraphOptions"));
    AddStep(fraExcel_, QStringLiteral("TS_PagePreview"));
    AddStep(nullptr, QStringLiteral("TS_PageSaveAs"));
    connect(axes_, &RowsColumnsPage::ArrangementChanged, this, [this] { options_->SetSorting({}, {}); });
    connect(options_, &GraphOptionsPage::SortRequested, this, &frmGraphWizard::ChooseSort);
    Form_Load();
}

void frmGraphWizard::Form_Load() {
    const ErrorTrap trap("Form_Load");
    SetFormFonts(this);
    axes_->SetFormCaptions();
    options_->SetFormCaptions();
    preview::StartSpreadsheet();
    RowsColumns first;
    first.SetDefaultRowsColumns();
    axes_->SetArrangement(first);
    Begin();
}

bool frmGraphWizard::GoForward(int step) {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    switch (step) {
    case Options:
        return LeaveAxes();
    case Preview:
        return ShowPreview();
    case Save:
        return SaveAs();
    default:
        return false;
    }
}

void frmGraphWizard::GoBack(int step) {
    if (step == Preview) fraExcel_->CloseHostedExcel();
}

bool frmGraphWizard::LeaveAxes() {
    if (axes_->Arrangement().Columns().empty()) {
        ShowMessage(QStringLiteral("204"));
        return false;
    }
    options_->SuggestKind(DefaultKind(axes_->Arrangement()));
    return true;
}

bool frmGraphWizard::ShowPreview() {
    RowsColumns arrangement = axes_->Arrangement();
    const WizardProgress progress{[this](int percent) { SetMainProgress(percent); },
                                  [this](int percent) { SetChildProgress(percent); },
                                  [this](const QString& key) { SetStatus(PlainText(key)); }};
    ShowOutcome outcome;
    try {
        outcome = ShowGraphXLS(arrangement, options_->Options(), progress);
    } catch (const office::Error& error) {
        ShowOfficeError(error, "CmdNext_Click");
        return false;
    }
    if (!(arrangement == axes_->Arrangement())) {
        const SortOrder sort = options_->Sorting();
        axes_->SetArrangement(arrangement);
        options_->SetSorting(sort, {});
    }
    if (!preview::Tell(outcome)) return false;
    workbookFile_ = outcome.WorkbookFile;
    ClearProgress();
    preview::Show(*fraExcel_, *this, workbookFile_);
    return true;
}

bool frmGraphWizard::SaveAs() {
    if (fraExcel_->IsOpen() && !fraExcel_->Save()) return false;
    if (!save_) return false;
    const bool over = save_({QLatin1Char('G'), QFileInfo(workbookFile_).completeBaseName(),
                             QFileInfo(workbookFile_).completeBaseName(), StepCaption(Save)},
                            this);
    if (over) done(QDialog::Accepted);
    return false; // otherwise the preview stays
}

void frmGraphWizard::ChooseSort() {
    ErrorTrap trap("SSCmdSort_Click");
    RowsColumns arrangement = axes_->Arrangement();
    PivotTable table;
    if (!preview::Tell(PrepareTable(WizardKind::Graph, arrangement, table, {}))) return;
    const QStringList heads = preview::Heads(table);
    SortChoice choice(heads, options_->Sorting(), this);
    if (choice.exec() == QDialog::Accepted) options_->SetSorting(choice.Order(), heads.value(choice.Order().column));
}

void frmGraphWizard::EndWizard() {
    fraExcel_->CloseHostedExcel();
    GiveTimeFor(0);
}

void frmGraphWizard::changeEvent(QEvent* event) {
    WizardFrame::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) fraExcel_->SetToolBars(isMaximized());
}

} // namespace tessaro
