#include "exchange/frmImport.h"

#include "controls/CancelWatch.h"
#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "database/UseOfFile.h"
#include "exchange/AreasPage.h"
#include "exchange/CheckPage.h"
#include "exchange/MappingPage.h"
#include "exchange/OpenSource.h"
#include "exchange/SourcePage.h"
#include "formats/ReadError.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/FileNames.h"
#include "session/Frame.h"
#include "session/JetCopies.h"
#include "session/Messages.h"
#include "session/Session.h"

#include <QFileInfo>
#include <QPushButton>
#include <QStandardPaths>

#include <algorithm>

namespace tessaro {

namespace {

constexpr std::size_t kRowsShown = 100;
constexpr std::size_t kTextsShown = 4;

QString Documents() {
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString MappingFilter() {
    return PlainText(QStringLiteral("TS_MappingFiles")) + QStringLiteral(" (*.import)");
}

void TellText(const QString& text) {
    ShowMessage(text, MessageType::Ok, MessageIcon::Warning, {}, false);
}

} // namespace

frmImport::frmImport(QWidget* parent) : WizardFrame(parent) {
    setObjectName(QStringLiteral("frmImport"));
    Form_Load();
}

frmImport::~frmImport() = default;

void frmImport::Form_Load() {
    const ErrorTrap trap("Form_Load");
    SetTitle(PlainText(QStringLiteral("TS_ImportTitle")));
    AddStep(source_ = new SourcePage, QStringLiteral("TS_PageSource"));
    AddStep(mapping_ = new MappingPage, QStringLiteral("TS_PageMapping"));
    AddStep(areas_ = new AreasPage, QStringLiteral("TS_PageAreas"));
    AddStep(check_ = new CheckPage, QStringLiteral("TS_PageCheck"));
    connect(source_, &SourcePage::Browse, this, &frmImport::cmdBrowse_Click);
    connect(source_, &SourcePage::BrowseTree, this, &frmImport::cmdAreaTree_Click);
    connect(source_, &SourcePage::Changed, this, &frmImport::ReadAgain);
    connect(mapping_, &MappingPage::RowsChanged, this, &frmImport::LookAgain);
    connect(mapping_, &MappingPage::Changed, this, &frmImport::ShowPreview);
    connect(mapping_, &MappingPage::KeepMapping, this, &frmImport::cmdKeepMapping_Click);
    connect(mapping_, &MappingPage::UseMapping, this, &frmImport::cmdUseMapping_Click);
    connect(check_, &CheckPage::SaveReport, this, &frmImport::cmdSaveReport_Click);
    source_->SetDatabase(DatabaseOpen && LanguageInDatabase, DatabaseOpen && !IsGenuineJetFile(CurrentDatabase));
    SetFormFonts(this);
    Begin();
    source_->setFocus();
}

bool frmImport::Told(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const ReadError& error) {
        TellText(error.Text());
    } catch (const office::Error& error) {
        ShowOfficeError(error, "frmImport");
    } catch (const jet::Error& error) {
        ErrorTrap::Report(error);
        ShowMessage(QStringLiteral("TS_DataUnreadable"));
    } catch (const ImportGivenUp&) {
        SetStatus({});
    }
    return false;
}

void frmImport::cmdBrowse_Click() {
    const QString filter = PlainText(QStringLiteral("TS_ImportFiles")) +
                           QStringLiteral(" (*.csv *.txt *.tsv *.xls *.xlsx *.ods *.px *.json)");
    const QString file = AskForFile(this, {PlainText(QStringLiteral("TS_ImportTitle")), Documents(), filter});
    if (!file.isEmpty()) TakeFile(file);
}

void frmImport::cmdAreaTree_Click() {
    const QString filter =
        PlainText(QStringLiteral("TS_TreeFile")) + QStringLiteral(" (*.csv *.txt *.tsv *.xls *.xlsx *.ods *.shp)");
    const QString file = AskForFile(this, {PlainText(QStringLiteral("TS_TreeFile")), Documents(), filter});
    if (!file.isEmpty()) source_->SetAreaTree(file);
}

void frmImport::TakeFile(const QString& file) {
    const WaitPointer wait;
    ImportDraft draft;
    QStringList sheets;
    FileSample sample;
    const bool read = Told([&] {
        if (KindOf(file) == FileKind::Workbook) sheets = SheetsOf(file);
        draft = GuessDraftOfSheets(file, sheets);
        sample = SampleOf(*OpenSource(file, draft));
    });
    if (!read) return;
    draft_ = std::move(draft);
    sheets_ = std::move(sheets);
    sample_ = std::move(sample);
    checked_.reset();
    source_->SetFile(file);
    ShowSource();
    ShowStep();
    findChild<QPushButton*>(QStringLiteral("CmdNext"))->setFocus();
}

void frmImport::ReadAgain() {
    const WaitPointer wait;
    ImportDraft draft = draft_;
    source_->TakeInto(draft);
    const bool onlyNumbers = draft.sheet == draft_.sheet && draft.csv == draft_.csv;
    FileSample sample = sample_;
    const bool read = Told([&] {
        if (onlyNumbers) return;
        sample = SampleOf(*OpenSource(source_->File(), draft));
        GuessColumns(sample, draft);
    });
    if (read) {
        draft_ = std::move(draft);
        sample_ = std::move(sample);
        checked_.reset();
    }
    ShowSource();
}

void frmImport::LookAgain() {
    ImportDraft rows = draft_;
    mapping_->TakeInto(rows);
    draft_ = rows;
    GuessHeadedColumns(sample_, draft_);
    ShowMapping();
}

ImportTable frmImport::SampleTable() const {
    std::size_t columns = 0;
    for (const auto& row : sample_.rows)
        columns = std::max(columns, row.size());
    QStringList heads;
    for (std::size_t column = 0; column < std::min<std::size_t>(columns, 200); ++column)
        heads << QString::number(column + 1);
    return {{}, heads, std::min(sample_.rows.size(), kRowsShown), [this](std::size_t number) {
                QStringList texts;
                for (const std::string& text : sample_.rows[number])
                    texts << QString::fromStdString(text);
                return texts;
            }};
}

QStringList frmImport::SamplesOfColumns() const {
    QStringList samples;
    const auto first = static_cast<std::size_t>(draft_.skippedRows + draft_.headRows);
    for (std::size_t column = 0; column < draft_.columns.size(); ++column) {
        QStringList texts;
        for (std::size_t row = first; row < sample_.rows.size() && texts.size() < qsizetype(kTextsShown); ++row)
            if (column < sample_.rows[row].size() && !sample_.rows[row][column].empty())
                texts << QString::fromStdString(sample_.rows[row][column]);
        texts.removeDuplicates();
        std::ranges::transform(texts, texts.begin(), InOnePiece); // "1 043,5" isn't turned around
        samples << texts.join(QStringLiteral("   "));
    }
    return samples;
}

void frmImport::ShowSource() {
    source_->ShowDraft(draft_, sheets_, SampleTable());
}

void frmImport::ShowMapping() {
    mapping_->ShowDraft(draft_, SamplesOfColumns());
    ShowPreview();
}

void frmImport::ShowPreview() {
    const WaitPointer wait;
    ImportDraft draft = draft_;
    mapping_->TakeInto(draft);
    std::vector<PreviewedValue> values;
    const bool shown = Told([&] {
        const ImportTarget target = TargetNow();
        const QStringList of{target.base, source_->AreaTree()};
        if (!preview_ || previewOf_ != of)
            preview_ = std::make_unique<RowPreview>(target.base, target.Suffix(), source_->AreaTree());
        previewOf_ = of;
        values = preview_->Of(sample_, draft);
    });
    if (shown) mapping_->ShowPreview(values);
}

bool frmImport::MayGoForward() const {
    return Step() != SourceStep || !source_->File().isEmpty();
}

bool frmImport::MayFinish() const {
    return Step() == CheckStep && checked_ != nullptr && checked_->HasWork();
}

QString frmImport::CancelQuestion() const {
    return source_->File().isEmpty() ? QString() : QStringLiteral("007");
}

bool frmImport::GoForward(int step) {
    if (step == MappingStep) {
        draft_.areaTree = source_->AreaTree();
        // An empty database has no areas to find.
        if (source_->Into() == ImportInto::Template && draft_.areaTree.isEmpty()) draft_.makesAreas = true;
        return draft_.areaTree.isEmpty() || Told([this] { static_cast<void>(ReadAreaTree(draft_.areaTree)); });
    }
    if (step == AreasStep) {
        mapping_->TakeInto(draft_);
        if (const QString problem = ProblemOf(draft_); !problem.isEmpty()) {
            TellText(problem);
            return false;
        }
        return Check();
    }
    const ImportDraft before = draft_;
    areas_->TakeInto(draft_);
    return (checked_ != nullptr && draft_ == before) || Check();
}

void frmImport::PageShown(int step) {
    if (step == MappingStep) ShowMapping();
    if (step == AreasStep && checked_) areas_->ShowCheck(*checked_);
    if (step == CheckStep && checked_) check_->ShowCheck(*checked_);
    ShowStep();
}

ImportTarget frmImport::TargetNow() const {
    const ImportInto into = source_->Into();
    const QString base =
        into == ImportInto::Template ? FindPath(DatabaseTemplate()) : FindPath(FileToOpen(CurrentDatabase));
    return {into, base, into == ImportInto::Itself ? base : QString(), Language};
}

bool frmImport::Check() {
    check_->Clear();
    checked_.reset();
    SetStatus(PlainText(QStringLiteral("TS_ImportChecking")));
    CancelWatch watch(*this, findChild<QPushButton*>(QStringLiteral("CmdCancel")));
    return Told([&] {
        checked_ = CheckImport(source_->File(), draft_, TargetNow(), [&](int percent) {
            SetMainProgress(percent);
            if (watch.Asked()) throw ImportGivenUp();
        });
    });
}

bool frmImport::AskTarget() {
    if (checked_->target.into == ImportInto::Itself) {
        const QString question =
            FilledText(QStringLiteral("TS_ImportAskItself"),
                       {InOnePiece(FileNameOf(CurrentDatabase)), QString::number(checked_->counts.fresh),
                        QString::number(checked_->counts.changed)});
        return AskBeforeLoss(question, MessageType::YesNo, {}, false) == MessageCode::Yes;
    }
    const QString name =
        CutForDisk(MakeFileNameSafe(QFileInfo(checked_->file).completeBaseName())) + QStringLiteral(".mdb");
    const QString folder = FolderOf(WritablePlace(JoinPath({DataFolder(), name}), AppPath, CacheFolder));
    checked_->target.file = AskForNewFile(
        this, {GetText(QStringLiteral("Save to Database")), folder, QStringLiteral("Microsoft Access (*.mdb)"), name});
    return !checked_->target.file.isEmpty();
}

bool frmImport::Finish() {
    if (!AskTarget()) return false;
    SetStatus(PlainText(QStringLiteral("COMM_PROCESSING")));
    CancelWatch watch(*this, findChild<QPushButton*>(QStringLiteral("CmdCancel")));
    const WrittenImport written = WriteImport(*checked_, [&](int percent) {
        SetMainProgress(percent);
        if (watch.Asked()) throw ImportGivenUp();
    });
    if (!written.message.isEmpty()) TellText(written.message);
    if (written.made) written_ = checked_->target.into == ImportInto::Itself ? CurrentDatabase : checked_->target.file;
    return written.made;
}

void frmImport::cmdKeepMapping_Click() {
    mapping_->TakeInto(draft_);
    const QString name = QFileInfo(source_->File()).completeBaseName() + QStringLiteral(".import");
    const QString file =
        AskForNewFile(this, {PlainText(QStringLiteral("TS_MappingKeep")), Documents(), MappingFilter(), name});
    if (!file.isEmpty() && !ReplaceFile(file, WrittenDraft(draft_).toUtf8()))
        ShowFilledMessage(QStringLiteral("TS_ExportFailed"), {file});
}

void frmImport::cmdUseMapping_Click() {
    const QString file = AskForFile(this, {PlainText(QStringLiteral("TS_MappingUse")), Documents(), MappingFilter()});
    if (file.isEmpty()) return;
    const auto text = ReadWholeFile(file);
    ImportDraft draft;
    if (!text || !ReadDraft(QString::fromUtf8(*text), draft) || draft.kind != draft_.kind) {
        ShowFilledMessage(QStringLiteral("TS_MappingUnreadable"), {file});
        return;
    }
    const bool read = Told([&] { sample_ = SampleOf(*OpenSource(source_->File(), draft)); });
    if (!read) return;
    draft_ = std::move(draft);
    source_->SetAreaTree(draft_.areaTree);
    ShowSource();
    ShowMapping();
}

void frmImport::cmdSaveReport_Click() {
    const QString filter = PlainText(QStringLiteral("TS_FilterWorkbook")) + QStringLiteral(" (*.xls);;CSV (*.csv)");
    const QString name = QFileInfo(source_->File()).completeBaseName() + QStringLiteral(".xls");
    const QString file = AskForNewFile(this, {PlainText(QStringLiteral("TS_ReportSave")), Documents(), filter, name});
    if (file.isEmpty() || !checked_) return;
    const WaitPointer wait;
    bool saved = false;
    const bool tried = Told([&] { saved = SaveReport(*checked_, file); });
    if (tried && !saved) ShowFilledMessage(QStringLiteral("TS_ExportFailed"), {file});
}

void frmImport::EndWizard() {
    check_->Clear();
    checked_.reset();
}

} // namespace tessaro
