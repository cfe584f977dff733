#include "selection/PrintSummaryView.h"

#include "controls/Captions.h"
#include "controls/OfficeErrors.h"
#include "selection/IndicatorSelection.h"
#include "selection/SelectionSheet.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/TempFiles.h"

namespace tessaro {

namespace {

selection::SheetTable TableOf(const QString& kind, const KeyedList& list, int view) {
    const std::vector<KeyedItem>& items = list.Items().Items();
    if (kind == QLatin1String("IND")) return selection::IndicatorTable(items, view, selection::ByCombination());
    if (kind == QLatin1String("TIME")) return selection::ListTable(items, {PlainText(QStringLiteral("Comm_Time"))});
    return selection::ListTable(
        items, {PlainText(QStringLiteral("Comm_Area Id")), PlainText(QStringLiteral("Comm_Area Name"))});
}

} // namespace

void PrintSummaryView(const QString& kind, const KeyedList& list, QWidget* form, int view) {
    Q_UNUSED(form) // the frame's pointer stands for all of its screens
    ErrorTrap trap("PrintSummaryView");
    QString file;
    TheFrame().SetBusy(true);
    try {
        file = selection::MakeSelectionSheet(TableOf(kind, list, view));
        TheFrame().SetBusy(false);
    } catch (const office::Error& error) {
        TheFrame().SetBusy(false);
        ShowOfficeError(error, "PrintSummaryView");
        return;
    }
    TheFrame().ShowWorkbook(file);
    ClearTempFolder();
}

} // namespace tessaro
