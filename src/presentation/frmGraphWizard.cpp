#include "presentation/frmGraphWizard.h"

#include "presentation/GraphOptionsPage.h"
#include "presentation/GraphWorkbook.h"
#include "presentation/RowsColumnsPage.h"
#include "session/Messages.h"

namespace tessaro {

namespace {

bool AskToDraw(const QString& question) {
    return AskBeforeLoss(question, MessageType::YesNo, {}, false) == MessageCode::Yes;
}

} // namespace

frmGraphWizard::frmGraphWizard(SavePresentation save, QWidget* parent)
    : PresentationWizard(WizardKind::Graph, std::move(save), parent), options_(new GraphOptionsPage) {
    setObjectName(QStringLiteral("frmGraphWizard"));
    options_->setObjectName(QStringLiteral("picStep2"));
    connect(options_, &GraphOptionsPage::SortRequested, this, [this] { ChooseSort("SSCmdSort_Click"); });
    Form_Load(QStringLiteral("TS_PageAxes"), options_, QStringLiteral("TS_PageGraphOptions"));
    options_->SetFormCaptions();
}

bool frmGraphWizard::LeaveFields() {
    const RowsColumns arrangement = Fields().Arrangement();
    if (arrangement.Columns().empty()) {
        ShowMessage(QStringLiteral("204"));
        return false;
    }
    options_->SuggestKind(DefaultKind(arrangement));
    return true;
}

GraphDraft frmGraphWizard::Draft() const {
    return {Fields().Arrangement(), options_->Options(), options_->KindChosen()};
}

void frmGraphWizard::SetDraft(const GraphDraft& draft) {
    Fields().SetArrangement(draft.arrangement);
    options_->SetOptions(draft.options, draft.kindChosen);
}

ShowOutcome frmGraphWizard::BuildWorkbook(RowsColumns& arrangement, const WizardProgress& progress) {
    return ShowGraphXLS(arrangement, options_->Options(), progress, AskToDraw);
}

ColumnSort frmGraphWizard::Sorting() const {
    return options_->Sorting();
}

void frmGraphWizard::SetSorting(const ColumnSort& sort, const QString& head) {
    options_->SetSorting(sort, head);
}

} // namespace tessaro
