#include "presentation/PresentationWizard.h"

#include "controls/CancelWatch.h"
#include "controls/Captions.h"
#include "controls/OfficeErrors.h"
#include "controls/OfficeHost.h"
#include "presentation/RowsColumnsPage.h"
#include "presentation/TableWorkbook.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "sheets/TimeLimit.h"

#include <QPushButton>

namespace tessaro {

namespace {

/// Shows the message of an outcome, if it has one; True when there is a workbook.
bool Tell(const ShowOutcome& outcome) {
    const QString key = outcome.MessageKey();
    const QString text = key.isEmpty() ? outcome.Message() : key;
    if (!text.isEmpty()) ShowMessage(text, MessageType::Ok, MessageIcon::Warning, {}, !key.isEmpty());
    return outcome.result == ShowResult::Built;
}

} // namespace

PresentationWizard::PresentationWizard(WizardKind kind, SavePresentation save, QWidget* parent)
    : HostedWizard(std::move(save), parent), kind_(kind), fields_(new RowsColumnsPage(kind)) {
    connect(fields_, &RowsColumnsPage::ArrangementChanged, this, [this] { KeepSorting({}, {}); });
}

void PresentationWizard::Form_Load(const QString& fieldsKey, QWidget* options, const QString& optionsKey) {
    const ErrorTrap trap("Form_Load");
    SetTitle(PlainText(kind_ == WizardKind::Table ? QStringLiteral("Table") : QStringLiteral("Graph")));
    AddStep(fields_, fieldsKey);
    AddStep(options, optionsKey);
    AddStep(&fraExcel(), QStringLiteral("TS_PagePreview"));
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
    untouched_ = DraftText();
    Begin();
}

bool PresentationWizard::GoForward(int step) {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    switch (step) {
    case OptionStep:
        return SuggestsOptions();
    case PreviewStep:
        return BuildAndShow();
    case SaveStep:
        return Save();
    default:
        return false;
    }
}

// Suggestions of the wizard don't count as choices of the user.
bool PresentationWizard::SuggestsOptions() {
    const bool untouched = DraftText() == untouched_;
    const bool left = LeaveFields();
    if (untouched) untouched_ = DraftText();
    return left;
}

QString PresentationWizard::CancelQuestion() const {
    return WorkbookFile().isEmpty() && DraftText() == untouched_ ? QString() : WizardFrame::CancelQuestion();
}

void PresentationWizard::GoBack(int left, int /*entered*/) {
    if (left == PreviewStep) ClosePreview();
}

ShowOutcome PresentationWizard::Build(RowsColumns& arrangement) {
    CancelWatch cancel(*this, findChild<QPushButton*>(QStringLiteral("CmdCancel")));
    return BuildWorkbook(arrangement, {[this](int percent) { SetMainProgress(percent); },
                                       [this](int percent) { SetChildProgress(percent); },
                                       [this](const QString& key) { SetStatus(PlainText(key)); },
                                       [&cancel] { return cancel.Asked(); }});
}

bool PresentationWizard::BuildAndShow() {
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
        const ColumnSort sort = Sorting(); // the columns have stayed
        const QString head = sortHead_;
        fields_->SetArrangement(arrangement);
        KeepSorting(sort, head);
    }
    if (!Tell(outcome)) return false;
    ShowPreview(outcome.WorkbookFile, outcome.SuggestedName);
    return true;
}

bool PresentationWizard::Save() {
    const QLatin1Char type(kind_ == WizardKind::Table ? 'T' : 'G');
    if (SaveAs(type, SaveStep)) done(QDialog::Accepted);
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

void PresentationWizard::KeepSorting(const ColumnSort& sort, const QString& head) {
    sortHead_ = head;
    SetSorting(sort, head);
}

void PresentationWizard::EndWizard() {
    HostedWizard::EndWizard();
    GiveTimeFor(0);
}

} // namespace tessaro
