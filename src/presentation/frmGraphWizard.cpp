#include "presentation/frmGraphWizard.h"

#include "presentation/GraphOptionsPage.h"
#include "presentation/GraphWorkbook.h"
#include "presentation/RowsColumnsPage.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QLocale>

namespace tessaro {

namespace {

bool MayDrawCrowded(int points, int series) {
    const QString text = GetText(QStringLiteral("TS_CrowdedGraph"))
                             .replace(QStringLiteral("%1"), QLocale::system().toString(points))
                             .replace(QStringLiteral("%2"), QLocale::system().toString(series));
    return ShowMessage(text, MessageType::YesNo, 104, {}, false) == MessageCode::Yes;
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

ShowOutcome frmGraphWizard::BuildWorkbook(RowsColumns& arrangement, const WizardProgress& progress) {
    return ShowGraphXLS(arrangement, options_->Options(), progress, MayDrawCrowded);
}

SortOrder frmGraphWizard::Sorting() const {
    return options_->Sorting();
}

void frmGraphWizard::SetSorting(const SortOrder& sort, const QString& head) {
    options_->SetSorting(sort, head);
}

} // namespace tessaro
