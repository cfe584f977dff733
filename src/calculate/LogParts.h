#pragma once

#include "calculate/CalculationLog.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

/// Helpers with which calculations build their logs: cell addresses, headings, detail sheets, failures.
namespace tessaro {

constexpr int kFirstItemColumn = 3; ///< behind the two columns of the area
constexpr int kHeadRow = 10;
constexpr int kDetailHeadRow = 9;

/// "C13", "$C$13" and "$C$13:$C$40".
[[nodiscard]] QString CellAt(int row, int column);
[[nodiscard]] QString FixedCellAt(int row, int column);
[[nodiscard]] QString FixedRange(int column, int firstRow, int lastRow);

/// Texts of keys as a row of headings.
[[nodiscard]] std::vector<office::Cell> Headings(const QStringList& keys);
[[nodiscard]] office::Cell NumberCell(const std::optional<double>& number);
/// A year as a number, as a spreadsheet takes it when it is typed, and any other period as text.
[[nodiscard]] office::Cell TimeCell(const QString& timePeriod);
/// For such a column: it begins where texts do.
[[nodiscard]] std::pair<int, office::Align> AsTexts(int column);

/// A result with the draft's decimals, as text with a decimal point; empty when there is none or it is no finite
/// number.
[[nodiscard]] QString ResultText(const std::optional<double>& result, const CalculationDraft& draft);

/// The area rows of a working sheet: blocks for headings and rows, with areas in the first two columns as text.
[[nodiscard]] LogSheet WorkingSheet(office::Block headings, office::Block rows, int firstRow);

/// The second sheet of a log, row by row. The area stands on the first line of its rows alone.
class DetailSheet final {
  public:
    explicit DetailSheet(std::vector<office::Cell> headings);

    void Add(const QString& areaId, const QString& areaName, std::vector<office::Cell> cells);
    [[nodiscard]] LogSheet Taken();

  private:
    std::vector<office::Cell> headings_;
    office::Block rows_;
    QString areaId_;
};

/// The rows of `_Data` for an indicator as a detail sheet, area by area. With a key in `resultHeading` a last column
/// has what `result` gives for each value.
[[nodiscard]] LogSheet DetailOfIndicator(const QString& indicator, const QString& resultHeading = {},
                                         const std::function<office::Cell(const QString&)>& result = {});

/// A log that could not be made.
[[nodiscard]] CalculationLog Failed(const QString& reason);
/// Why reading numbers from a working table failed: its first value that is no number with its indicator, area and
/// time, that their sum is no number, or that the log file tells more. `where` may narrow the rows ("Where …").
[[nodiscard]] QString ReasonOfFailure(const QString& table, const QString& where = {});

/// Columns that rows of a table go into, by the pair key of their GIds in small letters.
using ColumnsOfKeys = QHash<QString, QList<int>>;
/// The places in `items` of each pair of GIds that the table has.
[[nodiscard]] ColumnsOfKeys PlacesOfItems(const char* table, const std::vector<CalculationItem>& items);
/// True when a row's indicator and subgroup are those of an item, as the engine compares names.
[[nodiscard]] bool IsOfItem(const CalculationItem& item, const QString& indicator, const QString& subpop);
/// "Literacy", or "Literacy ~ Female".
[[nodiscard]] QString NameOf(const CalculationItem& item);

/// Identifies areas as the engine compares their ids.
[[nodiscard]] inline QString AreaKey(const QString& areaId) {
    return areaId.trimmed().toLower();
}

/// Adds a remark for each area of `_Data` that a sheet has no row for.
void RemarkAbsentAreas(CalculationLog& log, const QSet<QString>& present);

} // namespace tessaro
