#include "presentation/frmTableWizard.h"

#include "controls/Captions.h"
#include "presentation/ColorRangesPanel.h"
#include "presentation/RowsColumnsPage.h"
#include "presentation/TableOptionsPage.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"

#include <QPushButton>
#include <QStackedWidget>

namespace tessaro {

frmTableWizard::frmTableWizard(SavePresentation save, QWidget* parent)
    : PresentationWizard(WizardKind::Table, std::move(save), parent), options_(new TableOptionsPage),
      colors_(new ColorRangesPanel), optionsStack_(new QStackedWidget), cmdExport_(new QPushButton) {
    setObjectName(QStringLiteral("frmTableWizard"));
    optionsStack_->addWidget(options_);
    optionsStack_->addWidget(colors_);
    connect(options_, &TableOptionsPage::SortRequested, this, [this] { ChooseSort("CmdSort_Click"); });
    connect(options_, &TableOptionsPage::ColorRequested, this, &frmTableWizard::OpenColors);
    connect(colors_, &ColorRangesPanel::Kept, this, [this] {
        ranges_ = colors_->Ranges();
        CloseColors();
    });
    connect(colors_, &ColorRangesPanel::Dropped, this, &frmTableWizard::CloseColors);
    AddExportButton();
    Form_Load(QStringLiteral("TS_PageRowsAndColumns"), optionsStack_, QStringLiteral("TS_PageTableOptions"));
    options_->SetFormCaptions();
}

bool frmTableWizard::LeaveFields() {
    if (Fields().Arrangement().Rows().empty() && !options_->AddsColor()) {
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

TableDraft frmTableWizard::Draft() const {
    TableDraft draft{Fields().Arrangement(), options_->Options(), options_->TitleChanged()};
    draft.options.ranges = ranges_;
    return draft;
}

void frmTableWizard::SetDraft(const TableDraft& draft) {
    Fields().SetArrangement(draft.arrangement);
    options_->SetOptions(draft.options, draft.titleTyped);
    ranges_ = draft.options.ranges;
}

ShowOutcome frmTableWizard::BuildWorkbook(RowsColumns& arrangement, const WizardProgress& progress) {
    if (options_->AddsColor()) NeedRanges();
    return ShowXLS(arrangement, Draft().options, progress);
}

ColumnSort frmTableWizard::Sorting() const {
    return options_->Sorting();
}

void frmTableWizard::SetSorting(const ColumnSort& sort, const QString& head) {
    options_->SetSorting(sort, head);
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

} // namespace tessaro
