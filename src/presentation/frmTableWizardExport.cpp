#include "controls/Captions.h"
#include "controls/OfficeHost.h"
#include "controls/SaveDialog.h"
#include "controls/SaveRun.h"
#include "controls/WorkProgress.h"
#include "formats/ExportKinds.h"
#include "layers/AreaOutlines.h"
#include "office/Error.h"
#include "office/ForeignWorkbook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "presentation/PresentationFile.h"
#include "presentation/TableExport.h"
#include "presentation/frmTableWizard.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "sheets/UnfinishedFile.h"
#include "view/SourcesAndNotes.h"

#include <QPushButton>

namespace tessaro {

namespace {

/// The table as its sheet shows it: as a page, a text or a CSV.
int SaveShown(const QString& file, const RowsColumns& arrangement, const TableOptions& options) {
    ShownTable shown;
    if (ReadShownTable(arrangement, options, shown).result != ShowResult::Built) return 0;
    if (IsTableCsvName(file)) return SaveTableCsv(file, shown) ? 1 : 0;
    const bool isText = file.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive);
    return (isText ? SaveTableText(file, shown) : SaveTablePage(file, shown)) ? 1 : 0;
}

/// All of its values in one of the forms of values.
int SaveValues(const QString& file, const ValueForm& form, const TableOptions& options, WorkProgress& progress) {
    const TableValues values;
    AreaOutlines outlines;
    ValueTable table{values.Count(), [&](int number) -> std::optional<ValueRow> {
                         if (!progress.Show(number, values.Count())) throw SaveCancelled();
                         return values.At(number);
                     }};
    table.beforeLoss = [](const ValueLosses& losses) {
        if (!AsksToLose(losses)) throw SaveCancelled();
    };
    table.ringsOf = [&](const QString& areaId) { return outlines.RingsOf(areaId); };
    table.aboutSource = [texts = TextsOfSources()](const QString& source) { return texts.value(source); };
    table.title = options.title;
    table.subTitle = options.subTitle;
    return form.save(file, table) ? 1 : 0;
}

} // namespace

void frmTableWizard::AddExportButton() {
    cmdExport_->setObjectName(QStringLiteral("cmdExport"));
    cmdExport_->setAutoDefault(false);
    SetCaption(cmdExport_, QStringLiteral("TS_ExportTable"));
    cmdExport_->setToolTip(GetText(QStringLiteral("TS_ExportTableTip")));
    connect(cmdExport_, &QPushButton::clicked, this, &frmTableWizard::cmdExport_Click);
    AddButton(cmdExport_);
}

void frmTableWizard::PageShown(int step) {
    cmdExport_->setVisible(step == PreviewStep);
}

void frmTableWizard::cmdExport_Click() {
    const ErrorTrap trap("cmdExport_Click");
    const QString stem = CleanedTitle(Draft().options.title, PlainText(QStringLiteral("Table")));
    const QString file = AskWhereToSave(this, {PlainText(QStringLiteral("TS_ExportTable")), stem, TableKinds()});
    if (!file.isEmpty()) SaveTable(file);
}

void frmTableWizard::SaveTable(const QString& file) {
    const TableDraft draft = Draft();
    const auto write = [&](WorkProgress& progress) {
        if (IsWorkbookName(file)) return CopyWorkbook(file) ? 1 : 0;
        const ValueForm* const form = IsTableCsvName(file) ? nullptr : ValueFormOf(file);
        return form != nullptr ? SaveValues(file, *form, draft.options, progress)
                               : SaveShown(file, draft.arrangement, draft.options);
    };
    if (SaveWithProgress({file, TableKinds(), "SaveTable"}, this, write)) SetStatus(SavedText(file, TableKinds()));
}

// The workbook as it stands in the preview, with what the user has changed in it.
bool frmTableWizard::CopyWorkbook(const QString& file) {
    if (fraExcel().IsOpen() && !fraExcel().Save()) throw office::Error(office::Failure::File, fraExcel().ErrorText());
    if (file.endsWith(QLatin1String(".xls"), Qt::CaseInsensitive)) return CopyFileOver(WorkbookFile(), file);
    const UnfinishedFile work(GetFreeFileName(QStringLiteral("Table Export")));
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(WorkbookFile(), work.Path());
    office::SaveCopyAs(book, file);
    book.Close(false);
    return true;
}

} // namespace tessaro
