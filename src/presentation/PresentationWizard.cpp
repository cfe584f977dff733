#include "presentation/PresentationWizard.h"

#include "controls/Captions.h"
#include "controls/OfficeErrors.h"
#include "controls/OfficeHost.h"
#include "office/SpreadsheetApplication.h"
#include "presentation/CancelWatch.h"
#include "presentation/RowsColumnsPage.h"
#include "presentation/TableWorkbook.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QStackedWidget>

namespace tessaro {

namespace {

/// Shows the message of an outcome, if it has one; True when there is a workbook.
bool Tell(const ShowOutcome& outcome) {
    const QString key = outcome.MessageKey();
    const QString text = key.isEmpty() ? outcome.Message() : key;
    if (!text.isEmpty()) ShowMessage(text, MessageType::Ok, 103, {}, !key.isEmpty());
    return outcome.result == ShowResult::Built;
}

/// Starts the spreadsheet program, both the one that writes and the one that shows, without waiting for it.
void StartSpreadsheet() {
    office::SpreadsheetApplication::Instance().StartInAdvance();
    if (OfficeHost::CanHost()) office::SpreadsheetApplication::Hosted().StartInAdvance();
}

} // namespace

PresentationWizard::PresentationWizard(WizardKind kind, SavePresentation save, QWidget* parent)
    : WizardFrame(parent), kind_(kind), save_(std::move(save)), fields_(new RowsColumnsPage(kind)),
      fraExcel_(new OfficeHost) {
    fraExcel_->setObjectName(QStringLiteral("fraExcel"));
    connect(fields_, &RowsColumnsPage::ArrangementChanged, this, [this] { KeepSorting({}, {}); });
}

void PresentationWizard::Form_Load(const QString& fieldsKey, QWidget* options, const QString& optionsKey) {
    const ErrorTrap trap("Form_Load");
    SetTitle(PlainText(kind_ == WizardKind::Table ? QStringLiteral("Table") : QStringLiteral("Graph")));
    AddStep(fields_, fieldsKey);
    AddStep(options, optionsKey);
    AddStep(fraExcel_, QStringLiteral("TS_PagePreview"));
    AddStep(nullptr, QStringLiteral("TS_PageSaveAs"));
    SetFormFonts(this);
    fields_->SetFormCaptions();
    StartSpreadsheet();
    RowsColumns first;
    if (kind_ == WizardKind::Table)
        first.SetDefaultRowsColumns();
    else
        first.SetDefaultAxes();
    fields_->SetArrangement(first);
    Begin();
}

bool PresentationWizard::GoForward(int step) {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    switch (step) {
    case OptionStep:
        return LeaveFields();
    case PreviewStep:
        return ShowPreview();
    case SaveStep:
        return SaveAs();
    default:
        return false;
    }
}

void PresentationWizard::GoBack(int step) {
    if (step == PreviewStep) fraExcel_->CloseHostedExcel();
}

ShowOutcome PresentationWizard::Build(RowsColumns& arrangement) {
    CancelWatch cancel(*this, findChild<QPushButton*>(QStringLiteral("CmdCancel")));
    return BuildWorkbook(arrangement, {[this](int percent) { SetMainProgress(percent); },
                                       [this](int percent) { SetChildProgress(percent); },
                                       [this](const QString& key) { SetStatus(PlainText(key)); },
                                       [&cancel] { return cancel.Asked(); }});
}

bool PresentationWizard::ShowPreview() {
    RowsColumns arrangement = fields_->Arrangement();
    ShowOutcome outcome;
    ForgetWorkbook();
    try {
        outcome = Build(arrangement);
    } catch (const office::Error& error) {
        ShowOfficeError(error, "CmdNext_Click");
        return false;
    }
    if (outcome.result == ShowResult::GivenUp) return false;
    if (!(arrangement == fields_->Arrangement())) {
        const SortOrder sort = Sorting(); // the columns have stayed
        const QString head = sortHead_;
        fields_->SetArrangement(arrangement);
        KeepSorting(sort, head);
    }
    if (!Tell(outcome)) return false;
    workbookFile_ = outcome.WorkbookFile;
    suggestedName_ = outcome.SuggestedName;
    ClearProgress();
    ShowInPlace();
    return true;
}

// The one before must not take the name of the next.
void PresentationWizard::ForgetWorkbook() {
    if (!workbookFile_.isEmpty()) QFile::remove(workbookFile_);
    workbookFile_.clear();
}

// Where the workbook can't be shown the place says why, and the file stands.
void PresentationWizard::ShowInPlace() {
    // The place has to be in sight before another program's window can lie in it.
    if (auto* pages = qobject_cast<QStackedWidget*>(fraExcel_->parentWidget())) pages->setCurrentWidget(fraExcel_);
    fraExcel_->SetHint(GetText(QStringLiteral("TS_OfficeOpening")));
    repaint();
    fraExcel_->SetToolBars(isMaximized());
    fraExcel_->ShowWorkbook(workbookFile_);
}

bool PresentationWizard::SaveAs() {
    if (fraExcel_->IsOpen() && !fraExcel_->Save()) {
        ShowMessage(fraExcel_->ErrorText(), MessageType::Ok, 102, {}, false);
        return false;
    }
    if (!save_) return false;
    const QString name = QFileInfo(workbookFile_).completeBaseName();
    const QLatin1Char type(kind_ == WizardKind::Table ? 'T' : 'G');
    if (save_({type, name, suggestedName_.isEmpty() ? name : suggestedName_, StepCaption(SaveStep)}, this))
        done(QDialog::Accepted);
    return false; // otherwise the preview stays
}

void PresentationWizard::ChooseSort(const char* procedureName) {
    const ErrorTrap trap(procedureName);
    RowsColumns arrangement = fields_->Arrangement();
    PivotTable table;
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    const ShowOutcome outcome = PrepareTable(kind_, arrangement, table, {});
    SetStatus({});
    if (!Tell(outcome)) return;
    QStringList heads;
    for (const PivotColumn& column : table.columns)
        heads << column.head;
    SortChoice choice(heads, Sorting(), this);
    if (choice.exec() == QDialog::Accepted) KeepSorting(choice.Order(), heads.value(choice.Order().column));
}

void PresentationWizard::KeepSorting(const SortOrder& sort, const QString& head) {
    sortHead_ = head;
    SetSorting(sort, head);
}

void PresentationWizard::EndWizard() {
    fraExcel_->CloseHostedExcel();
    GiveTimeFor(0);
}

// Form_Resize: the spreadsheet's bars come with a maximised form.
void PresentationWizard::changeEvent(QEvent* event) {
    WizardFrame::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) fraExcel_->SetToolBars(isMaximized());
}

} // namespace tessaro
