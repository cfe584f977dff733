#pragma once

#include "presentation/PivotTable.h"
#include "presentation/PresentationFile.h"
#include "presentation/ValueRanges.h"
#include "sheets/ColumnWidths.h"
#include "sheets/NewWorkbook.h"

#include <QHash>
#include <QString>

/// Writes the workbook of a table.
namespace tessaro {

/// What the options page of the table wizard says.
struct TableOptions {
    QString title;
    QString subTitle;
    SheetFont titleFont{{}, 14, true, false};
    SheetFont subTitleFont{{}, 11, false, false};
    SheetFont bodyFont{};
    bool formatTable = true; ///< chkFormatTable
    bool sort = false;       ///< chkSort: by the column of values sortColumn, counted from 0
    int sortColumn = 0;
    bool sortAscending = true;
    bool addColor = false;     ///< chkAddColor
    bool sameDecimals = false; ///< chkSameDecimals: the numbers of a column all show as many decimals as the longest
    ValueRanges ranges;

    bool operator==(const TableOptions&) const = default;
};

/// Rows of the sheet.
struct TableLayout {
    static constexpr int HeaderRow = 7;
    static constexpr int FirstDataRow = 8;

    explicit TableLayout(int rows, bool addColor);
    int DataEnd;   ///< last row of values
    int LegendRow; ///< first of three; 0 without a legend
    int LastRow;   ///< where footnotes and sources begin
};

/// Writes a table into a copy of the template: the table's sheet, the list of values, the sources. It knows no screen.
class TableWorkbook final {
  public:
    /// `table` is in its final order.
    TableWorkbook(office::Workbook book, const PivotTable& table, const TableOptions& options,
                  const WizardProgress& progress);

    /// Fills all sheets and saves. Throws office::Error.
    void Write();

  private:
    void MeasureColumns();
    void WriteTitles();
    void WriteHeads();
    void WriteValues();
    void WriteLegend();
    void WriteMarks();
    [[nodiscard]] office::Cell MarkedCell(int row, int column);
    void FindDecimals();
    /// A value with the decimals that its column shows.
    [[nodiscard]] QString ShownValue(int row, int column) const;
    [[nodiscard]] int WriteFootnotes();
    void WriteSources(int row);
    /// The columns of a line below the table, their digits, and the digits that a line may have in one row.
    struct LineRoom {
        int columns;
        double digits;
        double longest;
    };
    [[nodiscard]] LineRoom RoomOfLines() const;
    void WrapLongLines();
    void FormatTable();
    void DrawBorders();
    void Dress();
    [[nodiscard]] int FootnoteNumber(qint64 id);
    [[nodiscard]] int SetCellBGColor(int row, int column) const;
    [[nodiscard]] office::CellStyle BodyLook() const { return options_.bodyFont.Style(); }
    [[nodiscard]] int LastColumn() const { return table_.FieldCount() + table_.ColumnCount(); }

    office::Workbook book_;
    office::Worksheet sheet_;
    const PivotTable& table_;
    const TableOptions& options_;
    const WizardProgress& progress_;
    TableLayout layout_;
    std::vector<qint64> arrFootnotes_; ///< ids in the order of their numbers
    QHash<qint64, int> footnoteNumbers_;
    std::vector<office::EndMark> marks_;
    std::vector<std::pair<int, QString>> longLines_; ///< rows below the table that may be longer than a page is wide
    std::vector<int> listHeads_;                     ///< rows of "Footnotes" and "Source", never the last of a page
    std::vector<int> decimals_;                      ///< most in each column of values
    int lastRow_ = 0;
    ColumnWidths widths_;
};

/// ShowXLS of the table wizard: builds the workbook of an arrangement in TempFolder. Fields that can't stay aside are
/// moved to the rows of `arrangement`. Throws office::Error.
[[nodiscard]] ShowOutcome ShowXLS(RowsColumns& arrangement, const TableOptions& options,
                                  const WizardProgress& progress = {});
/// The part that both wizards share: working tables, Build_Records, limits, the crosstab in the order of its heads.
/// A graph without a field on its Y axis gets one. What it says isn't Built leaves `table` empty.
[[nodiscard]] ShowOutcome PrepareTable(WizardKind kind, RowsColumns& arrangement, PivotTable& table,
                                       const WizardProgress& progress);
/// MakeWorkbook for a wizard: tells how far the work is, and puts the path into `outcome`. Throws office::Error and
/// WorkGivenUp.
[[nodiscard]] ShowOutcome WriteWorkbook(const WorkbookPlan& plan, ShowOutcome outcome, const WizardProgress& progress,
                                        const std::function<void(office::Workbook&)>& write);

} // namespace tessaro
