#pragma once

#include "office/CellStyle.h"

#include <QByteArray>
#include <QSizeF>
#include <QString>

#include <memory>
#include <vector>

namespace tessaro::office {

class Document;

/// A block of cells. What is written is collected and goes over in blocks: one for each block of values, one for each
/// distinct look, at the latest before something is read, saved, shown or closed (Document::Flush). Every function
/// throws Error.
class Range final {
  public:
    Range(std::shared_ptr<Document> document, int sheet, int row, int column, int lastRow, int lastColumn);

    [[nodiscard]] int Row() const { return row_; }
    [[nodiscard]] int Column() const { return column_; }
    [[nodiscard]] int LastRow() const { return lastRow_; }
    [[nodiscard]] int LastColumn() const { return lastColumn_; }
    [[nodiscard]] int Sheet() const { return sheet_; }
    /// "$A$1" or "$A$1:$D$9".
    [[nodiscard]] QString Address() const;

    /// The same value into every cell of the block.
    void SetValue(const Cell& value);
    /// A block of values from the range's first cell on, whatever the range's own size.
    void SetValues(const Block& values);
    /// Results of formulas as values; an error cell gives its text ("#DIV/0!").
    [[nodiscard]] Block Values() const;
    [[nodiscard]] Cell Value() const;
    /// The first cell's text as it is shown and printed, with the separators of the user's locale.
    [[nodiscard]] QString Text() const;
    /// A formula in the usual English form ("=SUM(A1,Sheet1!B2)") into the first cell. What is no formula is entered as
    /// if typed in English. Failure::Formula, with the cell and the text, for a formula that can't be read; the cell
    /// stays as it was.
    void SetFormula(const QString& formula);
    /// A block of them from the range's first cell on, all at once; when one can't be read all cells stay as they were.
    void SetFormulas(const FormulaBlock& formulas);
    /// One formula for the whole block: its addresses follow from cell to cell.
    void FillFormula(const QString& formula);
    /// What SetFormula takes; a value stands as it would be typed in English.
    [[nodiscard]] QString Formula() const;
    [[nodiscard]] FormulaBlock Formulas() const;
    /// Repeats the first row downwards; formulas follow.
    void FillDown();
    void ClearContents();

    void SetStyle(const CellStyle& style);
    void SetBorders(unsigned edges, const Border& border);
    void Merge();
    /// Width and height in points.
    [[nodiscard]] QSizeF Size() const;
    void AutoFitColumns();
    void AutoFitRows();

    /// Rich text in the first cell.
    void SetRichText(const std::vector<TextRun>& runs);
    /// A comment on the first cell.
    void AddComment(const QString& text);
    [[nodiscard]] QString Comment() const;

    /// Sorts the rows of the block (or its columns), looks with them; up to four keys, counted within the block.
    void SortRows(const std::vector<SortKey>& keys, bool hasHeader);
    void SortColumns(const std::vector<SortKey>& keys);

    /// Puts the block on the system's clipboard, as the program itself copies.
    void Copy() const;
    /// Shows the block as selected in a shown workbook.
    void Select() const;
    /// The block drawn as a metafile or picture ("image/x-emf", "image/png").
    [[nodiscard]] QByteArray AsPicture(const QString& mimeType) const;

  private:
    std::shared_ptr<Document> document_;
    int sheet_;
    int row_;
    int column_;
    int lastRow_;
    int lastColumn_;
};

} // namespace tessaro::office
