#include "selection/PrintSummaryView.h"

#include "controls/OfficeErrors.h"
#include "selection/IndicatorSelection.h"
#include "selection/ScreenParts.h"
#include "selection/SelectionSheet.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/TempFiles.h"

namespace tessaro {

namespace {

selection::SheetTable TableOf(const QString& kind, const KeyedList& list, int view) {
    const std::vector<KeyedItem>& items = list.Items().Items();
    if (kind == QLatin1String("IND")) return selection::IndicatorTable(items, view, selection::ByCombination());
    return kind == QLatin1String("TIME") ? selection::PeriodTable(items) : selection::AreaTable(items);
}

/// The sheet's file; empty when it couldn't be made, which has been told.
QString MakeSheet(const QString& kind, const KeyedList& list, int view) {
    try {
        const WaitState wait;
        return selection::MakeSelectionSheet(TableOf(kind, list, view));
    } catch (const office::Error& error) {
        ShowOfficeError(error, "PrintSummaryView");
        return {};
    }
}

} // namespace

void PrintSummaryView(const QString& kind, const KeyedList& list, QWidget* form, int view) {
    Q_UNUSED(form) // the frame's pointer stands for all of its screens
    ErrorTrap trap("PrintSummaryView");
    const QString file = MakeSheet(kind, list, view);
    if (!file.isEmpty()) TheFrame().ShowWorkbook(file);
    ClearTempFolder();
}

} // namespace tessaro
