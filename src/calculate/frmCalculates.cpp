#include "calculate/frmCalculates.h"

#include "calculate/DataEntryWorkbook.h"
#include "calculate/DatabaseBuilder.h"
#include "calculate/FormulaPage.h"
#include "calculate/LevelsPage.h"
#include "calculate/LogParts.h"
#include "calculate/LogWorkbook.h"
#include "calculate/SaveAsPage.h"
#include "calculate/SelectionPage.h"
#include "calculate/UnitFactorsPage.h"
#include "calculate/WeightsPage.h"
#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "controls/OfficeHost.h"
#include "database/UseOfFile.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/FileNames.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "sheets/TimeLimit.h"

#include <QFile>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaro {

namespace {

/// A page that the host is put on while its workbook is shown.
QWidget* MakeContainer(const char* name) {
    auto* container = new QWidget;
    container->setObjectName(QLatin1String(name));
    auto* layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    return container;
}

} // namespace

frmCalculates::frmCalculates(CalcType type, QWidget* parent) : HostedWizard({}, parent) {
    setObjectName(QStringLiteral("frmCalculates"));
    draft_.type = type;
    if (type == CalcType::Subtotal) draft_.decimals.clear(); // it has no page that asks for them
    Form_Load();
}

frmCalculates::~frmCalculates() = default;

void frmCalculates::Form_Load() {
    const ErrorTrap trap("Form_Load");
    SetTitle(PlainText(QLatin1String(NamesOf(draft_.type).titleKey)));
    NameButtons();
    for (int step = SelectionStep; step < kCalculationSteps; ++step) {
        const CalculationStepEntry& entry = EntryAt(static_cast<CalculationStep>(step));
        if (entry.page == PageKind::None) continue;
        shown_.push_back(static_cast<CalculationStep>(step));
        QWidget* page = MakePage(entry.page);
        pages_[static_cast<std::size_t>(step)] = page;
        AddStep(page, QLatin1String(entry.captionKey));
        if (auto* typed = qobject_cast<CalculationPage*>(page))
            connect(typed, &CalculationPage::Changed, this, [this] { ShowStep(); });
    }
    pages_[LogStep]->layout()->addWidget(&fraExcel());
    SetFormFonts(this);
    StartSpreadsheet();
    Begin();
}

// The buttons go by the names of this form.
void frmCalculates::NameButtons() {
    const char* const buttons[] = {"CmdCancel", "CmdBack", "CmdNext", "CmdFinish"};
    int index = 0;
    for (const char* name : buttons)
        findChild<QPushButton*>(QLatin1String(name))->setObjectName(QStringLiteral("cmdNavigators_%1").arg(index++));
}

QWidget* frmCalculates::MakePage(PageKind kind) {
    switch (kind) {
    case PageKind::Indicators:
        return new SelectionPage(draft_.type, SelectionPage::Role::Items);
    case PageKind::Denominators:
        return new SelectionPage(draft_.type, SelectionPage::Role::Denominators);
    case PageKind::Formula:
        return formula_ = new FormulaPage;
    case PageKind::Weights:
        return new WeightsPage;
    case PageKind::UnitFactors:
        return new UnitFactorsPage;
    case PageKind::Levels:
        return new LevelsPage;
    case PageKind::SaveAs:
        return saveAs_ = new SaveAsPage(draft_.type);
    case PageKind::Log:
        return MakeContainer("picXLS_LOG_Container");
    case PageKind::DataEntry:
        return MakeContainer("picXLSContainer");
    case PageKind::None:
        break;
    }
    return nullptr;
}

const CalculationStepEntry& frmCalculates::EntryAt(CalculationStep step) const {
    return StepsOf(draft_.type)[step];
}

CalculationStep frmCalculates::StepNumber(int wizardStep) const {
    const auto place = static_cast<std::size_t>(wizardStep - 1);
    return place < shown_.size() ? shown_[place] : SelectionStep;
}

CalculationStep frmCalculates::CurrentStep() const {
    return StepNumber(Step());
}

CalculationPage* frmCalculates::PageAt(CalculationStep step) const {
    return qobject_cast<CalculationPage*>(pages_[step]);
}

CalculationDraft frmCalculates::Draft() const {
    CalculationDraft draft = draft_;
    if (const CalculationPage* page = PageAt(CurrentStep()); page && isFilled_) page->TakeInto(draft);
    return draft;
}

void frmCalculates::SetDraft(const CalculationDraft& draft) {
    draft_ = draft;
    PageShown(Step());
}

void frmCalculates::Start() {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    CreateDataTable([this](int step, int of) { SetChildProgress(of > 0 ? 100 * step / of : 0); });
    isFilled_ = true;
    PageShown(Step());
}

bool frmCalculates::MayGoForward() const {
    const CalculationPage* page = PageAt(CurrentStep());
    return !page || page->IsComplete();
}

void frmCalculates::PageShown(int step) {
    CalculationPage* page = PageAt(StepNumber(step));
    // Next is off there, and Return must not hit Cancel instead.
    if (MayFinish()) findChild<QPushButton*>(QStringLiteral("cmdNavigators_3"))->setFocus();
    if (!page || !isFilled_) return;
    PreparePage(StepNumber(step));
    page->ShowDraft(draft_);
    ShowStep();
}

void frmCalculates::PreparePage(CalculationStep step) {
    const ErrorTrap trap("ShowThisStep");
    const QString indicator = draft_.items.empty() ? QString() : draft_.items.front().indicator;
    switch (EntryAt(step).page) {
    case PageKind::UnitFactors:
        return KeepFactors(draft_, UnitsOf(indicator));
    case PageKind::SaveAs:
    case PageKind::Levels: // which stands for the page that asks for names
        return FillNames();
    default:
        return;
    }
}

void frmCalculates::FillNames() {
    if (draft_.items.empty()) return;
    const NameChoices choices = NamesFor(draft_.items.front());
    const ResultNames names = SuggestNames(draft_, choices);
    TakeSuggestions(draft_, suggested_, names);
    suggested_ = names;
    if (saveAs_) saveAs_->SetChoices(choices, draft_.items);
}

bool frmCalculates::ValidateCurrentStep() {
    const CalculationStep step = CurrentStep();
    if (CalculationPage* page = PageAt(step)) page->TakeInto(draft_);
    if (EntryAt(step).page == PageKind::Formula) return formula_->cmdValidate_Click(false);
    if (!EntryAt(step).check) return true;
    const StepProblem problem = EntryAt(step).check(draft_);
    if (problem.key.isEmpty()) return true;
    ShowMessage(problem.key);
    if (problem.control) PageAt(step)->FocusOn(problem.control, problem.row);
    return false;
}

bool frmCalculates::GoForward(int step) {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    if (!ValidateCurrentStep()) return false;
    try {
        if (StepNumber(step) == LogStep) return ShowLog();
        if (StepNumber(step) == DataEntryStep) return ShowDataEntry();
    } catch (const office::Error& error) {
        ShowOfficeError(error, "cmdNavigators_Click");
        return false;
    }
    return true;
}

// The log is read again from its file; what was changed in the data-entry sheet is made anew from it.
void frmCalculates::GoBack(int left, int entered) {
    if (CalculationPage* page = PageAt(StepNumber(left))) page->TakeInto(draft_);
    if (StepNumber(left) == LogStep) ClosePreview();
    if (StepNumber(left) != DataEntryStep) return;
    ClosePreview(false);
    ShowIn(StepNumber(entered), logFile_);
}

bool frmCalculates::ShowLog() {
    log_ = Calculate(draft_, [this](int step, int of) { SetMainProgress(of > 0 ? 50 * step / of : 0); });
    if (!log_.failure.isEmpty()) {
        ShowMessage(log_.failure, MessageType::Ok, MessageIcon::Warning, {}, false);
        return false;
    }
    RemoveFiles();
    SetMainProgress(50);
    const WrittenWorkbook log = WriteLog(draft_, log_, std::exchange(isFirstLog_, false),
                                         OfficeHost::CanHost() ? LogResults::LeftToHost : LogResults::Written);
    if (log.file.isEmpty()) {
        ShowMessage(log.messageKey);
        return false;
    }
    logFile_ = log.file;
    ShowIn(LogStep, logFile_);
    return true;
}

bool frmCalculates::ShowDataEntry() {
    if (!SaveShown()) return false;
    office::Workbook log = OpenBook(logFile_);
    const DataEntrySheet result = ReadResults(log, draft_, log_);
    // The host that was to calculate it is gone.
    if (OfficeHost::CanHost() && !fraExcel().IsOpen()) log.Save();
    if (result.rows.empty()) {
        ShowMessage(QStringLiteral("TS_NoResults"));
        return false;
    }
    const WrittenWorkbook sheet = WriteDataEntrySheet(result);
    if (sheet.file.isEmpty()) {
        ShowMessage(sheet.messageKey);
        return false;
    }
    ClosePreview(false);
    dataEntryFile_ = sheet.file;
    ShowIn(DataEntryStep, dataEntryFile_);
    return true;
}

void frmCalculates::ShowIn(CalculationStep step, const QString& file) {
    pages_[step]->layout()->addWidget(&fraExcel());
    ShowPreview(file);
}

bool frmCalculates::SaveShown() {
    if (!fraExcel().IsOpen() || fraExcel().Save()) return true;
    ShowMessage(fraExcel().ErrorText(), MessageType::Ok, MessageIcon::Note, {}, false);
    return false;
}

office::Workbook frmCalculates::OpenBook(const QString& file) {
    return fraExcel().IsOpen() ? fraExcel().xlBook() : office::SpreadsheetApplication::Instance().OpenWorkbook(file);
}

bool frmCalculates::Finish() {
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    try {
        if (!SaveShown() || !SaveToDatabase()) return false;
    } catch (const office::Error& error) {
        ShowOfficeError(error, "cmdNavigators_Click");
        return false;
    }
    ClosePreview();
    AskToOpen();
    return true;
}

bool frmCalculates::SaveToDatabase() {
    const QString name = CutForDisk(MakeFileNameSafe(draft_.indicator)) + QStringLiteral(".mdb");
    const QString folder = FolderOf(WritablePlace(JoinPath({DataFolder(), name}), AppPath, CacheFolder));
    const QString target = AskForNewFile(
        this, {GetText(QStringLiteral("Save to Database")), folder, QStringLiteral("Microsoft Access (*.mdb)"), name});
    if (target.isEmpty()) return false;
    if (IsDatabaseInUse(target)) {
        ShowMessage(QStringLiteral("012"));
        return false;
    }
    const DataEntrySheet result = ReadDataEntrySheet(OpenBook(dataEntryFile_));
    if (result.rows.empty()) {
        ShowMessage(QStringLiteral("TS_NoResults"));
        return false;
    }
    const BuiltDatabase built = BuildDatabase(result, draft_.saveWithDataView, target, WhatWasCalculated());
    if (built.made) builtFile_ = target;
    if (!built.message.isEmpty()) ShowMessage(built.message, MessageType::Ok, MessageIcon::Warning, {}, false);
    return built.made;
}

QString frmCalculates::WhatWasCalculated() const {
    if (draft_.type == CalcType::Formula)
        return PlainText(QStringLiteral("FORMULA")) + QStringLiteral(": ") + draft_.formula.simplified();
    QStringList names;
    for (const auto* items : {&draft_.items, &draft_.denominators})
        for (const CalculationItem& item : *items)
            names << NameOf(item);
    return PlainText(QLatin1String(NamesOf(draft_.type).moduleKey)) + QStringLiteral(": ") +
           names.join(QStringLiteral("; "));
}

void frmCalculates::AskToOpen() {
    const QString question = FilledText(QStringLiteral("TS_OpenBuiltDatabase"), {InOnePiece(FileNameOf(builtFile_))});
    opensResult_ = ShowMessage(question, MessageType::YesNo, MessageIcon::Question, {}, false) == MessageCode::Yes;
}

QString frmCalculates::CancelQuestion() const {
    return MayFinish() ? QStringLiteral("006") : QStringLiteral("007");
}

void frmCalculates::EndWizard() {
    HostedWizard::EndWizard();
    GiveTimeFor(0);
    DropAllWorkingTables();
    if (builtFile_.isEmpty()) RemoveFiles();
}

void frmCalculates::RemoveFiles() {
    for (QString* file : {&logFile_, &dataEntryFile_}) {
        if (!file->isEmpty()) QFile::remove(*file);
        file->clear();
    }
}

} // namespace tessaro
