#include "selection/PrintSummaryView.h"

#include "controls/OfficeErrors.h"
#include "selection/IndicatorSelection.h"
#include "selection/SelectionSheet.h"
#include "session/ErrorSink.h"

namespace tessaro {

namespace {

selection::SheetTable TableOf(const QString& kind, const KeyedList& list, int view) {
    const std::vector<KeyedItem>& items = list.Items().Items();
    if (kind == QLatin1String("IND")) return selection::IndicatorTable(items, view, selection::ByCombination());
    return kind == QLatin1String("TIME") ? selection::PeriodTable(items) : selection::AreaTable(items);
}

} // namespace

void PrintSummaryView(const QString& kind, const KeyedList& list, QWidget* form, int view) {
    Q_UNUSED(form) // the wait cursor is set for the whole application
    ErrorTrap trap("PrintSummaryView");
    ShowMadeWorkbook("PrintSummaryView", [&] { return selection::MakeSelectionSheet(TableOf(kind, list, view)); });
}

} // namespace tessaro
