#pragma once

#include "office/Chart.h"
#include "office/Range.h"
#include "office/Shape.h"

#include <QByteArray>
#include <QColor>
#include <QRectF>
#include <QString>

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace tessaro::office {

class Document;

/// One text of a header or footer. "&P" is the page, "&N" the number of pages, "&&" one "&".
struct PageText {
    QString text = {};
    CellStyle font = {}; ///< name, size, bold, italic, underline, colour
};

/// A header or footer; empty for none.
struct PageLine {
    PageLine() = default;
    PageLine(const QString& middle) : center{middle} {}
    PageLine(PageText atLeft, PageText inMiddle, PageText atRight)
        : left(std::move(atLeft)), center(std::move(inMiddle)), right(std::move(atRight)) {}
    [[nodiscard]] bool IsEmpty() const { return left.text.isEmpty() && center.text.isEmpty() && right.text.isEmpty(); }

    PageText left;
    PageText center;
    PageText right;
};

/// A4 with margins of 15 mm, or what the sheet has by its template.
enum class Paper { A4, Own };

/// So many rows at the top and columns at the left of a sheet.
struct SheetHeads {
    int rows = 0;
    int columns = 0;
};

/// What a printed page looks like; what isn't set stays as it is.
struct PageSetup {
    Paper paper = Paper::A4;
    std::optional<bool> landscape = {};
    int fitToPagesWide = 0; ///< 0: as large as it is
    int fitToPagesTall = 0; ///< 0: as many as it takes
    std::optional<PageLine> header = {};
    std::optional<PageLine> footer = {};
    std::optional<int> titleRows = {};      ///< rows down to this one are repeated on each page
    int firstTitleRow = 1;                  ///< the first of them
    std::optional<int> titleColumns = {};   ///< columns that are repeated on each page
    std::optional<SheetHeads> printed = {}; ///< so many rows and columns, and none behind them
    std::optional<bool> centered = {};      ///< in the middle of the page
    std::optional<bool> gridLines = {};
};

/// The last characters of a cell's text.
struct EndMark {
    int row;
    int column;
    int length;
};

/// One sheet of a workbook. Rows and columns are counted from 1. Every function throws Error.
class Worksheet final {
  public:
    Worksheet(std::shared_ptr<Document> document, int number);

    [[nodiscard]] int Number() const { return number_; }
    [[nodiscard]] QString Name() const;
    /// Characters that names can't have become "_", and a name is cut after 31.
    void SetName(const QString& name);

    [[nodiscard]] Range Cells(int row, int column) const;
    [[nodiscard]] Range Cells(int row, int column, int lastRow, int lastColumn) const;
    /// "B2", "$A$1:$D$9".
    [[nodiscard]] Range Address(const QString& address) const;
    /// From cell A1 to the last row and column that hold a value; just A1 on an empty sheet.
    [[nodiscard]] Range UsedRange() const;

    void SetColumnWidth(int column, double characters);
    /// By column; neighbours of one width go over together.
    void SetColumnWidths(const std::map<int, double>& characters);
    void SetRowHeight(int row, double points);
    void SetRowHeights(int row, int lastRow, double points);
    /// Columns go from right to left, from the sheet's right side.
    void SetRightToLeft(bool on);
    void SetPageSetup(const PageSetup& setup);
    /// Starts a page with this row when otherwise the next row would start one. Heights and page setup are to be final.
    void KeepWithNext(int row);
    /// Rows above and columns left of this cell stay in view.
    void FreezePanes(int row, int column);
    void SetGridLines(bool shown);
    /// What is repeated on each page or stays in view.
    [[nodiscard]] SheetHeads Heads() const;
    void HideRows(int row, int lastRow);
    void HideColumns(int column, int lastColumn);

    /// A chart of a block: header row and column are names when told. Placed at `place` (points). A chart has no name
    /// in the file, so it is found by its number, from 1 in order of making.
    Chart AddChart(ChartKind kind, const Range& data, bool columnHeaders, bool rowHeaders, const QRectF& place);
    [[nodiscard]] int ChartCount() const;
    [[nodiscard]] Chart ChartAt(int number) const;

    /// Raises the ends of texts as marks of footnotes, small and in this colour; `regular` also takes bold and italic
    /// off them. Thousands take about a second.
    void MarkEnds(const std::vector<EndMark>& marks, int colorIndex, bool regular);

    Shape AddPicture(const QString& name, const QByteArray& picture, const QRectF& place);
    Shape AddShape(const QString& name, ShapeKind kind, const QRectF& place);
    void AddShapes(const std::vector<ShapePlan>& plans) { Shape::AddAll(document_, number_, plans); }
    [[nodiscard]] bool HasShape(const QString& name) const;
    [[nodiscard]] Shape ShapeNamed(const QString& name) const;
    [[nodiscard]] std::vector<QString> ShapeNames() const;

  private:
    std::shared_ptr<Document> document_;
    int number_;
};

/// A name as sheets can have it: characters that names can't have become "_", and it is cut after 31.
[[nodiscard]] QString CleanSheetName(const QString& name);

} // namespace tessaro::office
