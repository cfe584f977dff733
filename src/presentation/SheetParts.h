#pragma once

#include "office/Workbook.h"
#include "presentation/PivotTable.h"

#include <QString>

#include <functional>
#include <map>
#include <vector>

namespace tessaro {

/// A font as a text box of the options page holds it.
struct TableFont {
    QString name;
    double size = 10;
    bool bold = false;
    bool italic = false;

    [[nodiscard]] office::CellStyle Style() const;
    bool operator==(const TableFont&) const = default;
};

/// True while the program speaks the language that the product is written in.
[[nodiscard]] bool LanguageIsEnglish();
/// A font for texts of the data: the language's name and size where that isn't English, the weight of the one given.
[[nodiscard]] TableFont TextFont(const TableFont& body);

/// Collects looks of cells and writes them one look after the other, each in runs down a column.
class LookCollector final {
  public:
    /// Cells of a column must come from top to bottom.
    void Add(int row, int column, const office::CellStyle& look);
    /// Goes from top to bottom, some thousand runs at a time: looks that are set far above others move all those.
    void WriteTo(const office::Worksheet& sheet) const;

  private:
    struct Run {
        int column;
        int first;
        int last;
        std::size_t look = 0;
    };
    struct Look {
        office::CellStyle style;
        std::vector<Run> runs;
        std::map<int, std::size_t> latest; ///< by column
    };
    std::vector<Look> looks_;
};

/// A data value as a cell: a number where it reads as one, else its text.
[[nodiscard]] office::Cell ValueCell(const QString& value);
/// The decimals that a value has: none for a text or a number with an exponent.
[[nodiscard]] int DecimalsOf(const QString& value);
/// A number with zeros behind it up to so many decimals; all else as it stands.
[[nodiscard]] QString WithZeros(const QString& value, int decimals);
/// The number format that shows a value with the decimals that it has; "General" where it has an exponent or is text.
[[nodiscard]] QString ValueFormat(const QString& value);

/// Digits of the usual size that a landscape page has room for, and that a text takes.
constexpr double PageDigits = 140;
[[nodiscard]] double TextWidth(const QString& text, const TableFont& font);

/// Finds widths of columns from their texts.
class ColumnWidths final {
  public:
    /// Longest text of a head, which is wrapped, and of any other cell, in digits.
    static constexpr double WidestHead = 28;
    static constexpr double WidestCell = 60;

    void AddHead(int column, const QString& text);
    void Add(int column, const QString& text);
    /// A cell that is longer than the widest, so that it has to be wrapped.
    [[nodiscard]] bool Wraps(int column) const;
    /// How many pages the columns need side by side to stay readable; those up to `titleColumns` stand on each.
    [[nodiscard]] int PagesFor(int titleColumns, const TableFont& font) const;
    void WriteTo(office::Worksheet& sheet, const TableFont& font) const;
    /// Width of a column in digits of the usual size, with a gap.
    [[nodiscard]] double SheetWidth(int column, const TableFont& font) const;

  private:
    std::map<int, double> widths_;
    std::map<int, bool> wraps_;
};

/// Lets calls of the spreadsheet program take longer for many values, until none are told.
void GiveTimeFor(int values);

/// The texts of the sources that the values come from.
[[nodiscard]] QStringList SourcesOfSelection();
/// The text of a footnote; a null text when there is none.
[[nodiscard]] QString FootnoteText(qint64 id);

/// Sends the looks that wait before the values come: on cells that are still empty no height of a row has to be found
/// anew for each of them.
void SendLooks(const office::Worksheet& sheet);

/// Fills the sheets of all values (the first at `first`, more behind the last sheet when one doesn't hold them) and of
/// sources. A data sheet that has its head already stays as it is.
void WriteDataList(office::Workbook& book, int first, const TableFont& font);
void WriteSourceSheet(office::Worksheet sheet, const TableFont& font);
/// Landscape, so many pages wide, pages numbered through the workbook; `titleRows` rows (and, on several pages side by
/// side, the columns before `firstColumn`) are repeated on each page and stay in view. A sheet without them lies in the
/// middle of its page. For an empty sheet: on a full one each setting breaks all its pages anew.
void SetUpSheet(office::Worksheet& sheet, int titleRows, int firstColumn, int pagesWide = 1);
/// Rows that part the titles from a table: one narrow line, whose number can still be read beside it on the screen, and
/// the others out of sight.
void SetGap(office::Worksheet& sheet, int first, int last);
/// Lets texts begin on the side where the language begins its lines.
void SetLeading(office::CellStyle& look);
/// Gives rows room for a language's font whose letters are much higher than the digits beside them.
void SetTallRows(office::Worksheet& sheet, int first, int last, int columns, const TableFont& font);

} // namespace tessaro
