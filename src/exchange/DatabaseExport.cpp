#include "exchange/DatabaseExport.h"

#include "controls/SaveDialog.h"
#include "controls/SaveRun.h"
#include "controls/WorkProgress.h"
#include "exchange/DatabaseRows.h"
#include "exchange/DatabaseWorkbook.h"
#include "formats/ExportKinds.h"
#include "layers/AreaOutlines.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "view/SourcesAndNotes.h"

#include <QFileInfo>

namespace tessaro {

namespace {

std::vector<SaveKind> Kinds() {
    std::vector<SaveKind> kinds = ValueKinds();
    for (const SaveKind& kind : WorkbookKinds())
        kinds.push_back(kind);
    return kinds;
}

int Write(const QString& file, WorkProgress& progress) {
    DatabaseRows rows;
    AreaOutlines outlines;
    ValueTable table{rows.Count(), [&](int number) {
                         if (!progress.Show(number, rows.Count())) throw SaveCancelled();
                         return rows.At(number);
                     }};
    table.beforeLoss = [](const ValueLosses& losses) {
        if (!AsksToLose(losses)) throw SaveCancelled();
    };
    table.ringsOf = [&](const QString& areaId) { return outlines.RingsOf(areaId); };
    table.aboutSource = [texts = TextsOfSources()](const QString& source) { return texts.value(source); };
    if (IsWorkbookName(file)) return SaveDatabaseWorkbook(file, table);
    const ValueForm* const form = ValueFormOf(file);
    return form != nullptr && form->save(file, table) ? 1 : 0;
}

} // namespace

void ExportDatabase(QWidget* owner) {
    const QString file = AskWhereToSave(owner, {PlainText(QStringLiteral("TS_ExportDatabase")),
                                                QFileInfo(CurrentDatabase).completeBaseName(), Kinds()});
    if (!file.isEmpty()) SaveDatabaseValues(file, owner);
}

bool SaveDatabaseValues(const QString& file, QWidget* owner) {
    return SaveWithProgress({file, Kinds(), "SaveDatabaseValues"}, owner,
                            [&file](WorkProgress& progress) { return Write(file, progress); });
}

} // namespace tessaro
