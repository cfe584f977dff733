#pragma once

#include "office/Chart.h"
#include "office/Range.h"

#include <QByteArray>
#include <QRectF>
#include <QString>

#include <memory>
#include <vector>

namespace tessaro::office {

class Document;

/// What a printed page looks like.
struct PageSetup {
    bool landscape = false;
    int fitToPagesWide = 0; ///< 0: as large as it is
    QString header = {};    ///< middle of the header line; empty for none
    QString footer = {};    ///< "&P" is the page, "&N" the number of pages
    int titleRows = 0;      ///< rows that are repeated on each page
    int titleColumns = 0;   ///< columns that are repeated on each page
    bool centered = false;  ///< in the middle of the page
    bool gridLines = false;
};

/// Plain forms that can be drawn on a sheet.
enum class ShapeKind { Rectangle, Ellipse, Triangle, Cross, Diamond, Star, Hexagon, RoundRectangle };

/// A picture or form on a sheet, found by its name. Places and sizes are points from the sheet's corner.
class Shape final {
  public:
    Shape(std::shared_ptr<Document> document, int sheet, QString name);

    [[nodiscard]] QString Name() const { return name_; }
    [[nodiscard]] QRectF Place() const;
    void SetPlace(const QRectF& place);
    void SetFill(int colorIndex);
    void SetLine(int colorIndex, double points);
    void SetText(const QString& text, const CellStyle& font);
    /// The picture as PNG, this many pixels wide.
    [[nodiscard]] QByteArray AsPng(int pixelWidth) const;
    void Remove();

  private:
    std::shared_ptr<Document> document_;
    int sheet_;
    QString name_;
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
    void SetRowHeight(int row, double points);
    void SetRowHeights(int row, int lastRow, double points);
    /// Columns go from right to left, from the sheet's right side.
    void SetRightToLeft(bool on);
    void SetPageSetup(const PageSetup& setup);
    /// Rows above and columns left of this cell stay in view.
    void FreezePanes(int row, int column);
    void SetGridLines(bool shown);

    /// A chart of a block: header row and column are names when told. Placed at `place` (points). A chart has no name
    /// in the file, so it is found by its number, from 1 in order of making.
    Chart AddChart(ChartKind kind, const Range& data, bool columnHeaders, bool rowHeaders, const QRectF& place);
    [[nodiscard]] int ChartCount() const;
    [[nodiscard]] Chart ChartAt(int number) const;

    Shape AddPicture(const QString& name, const QByteArray& picture, const QRectF& place);
    Shape AddShape(const QString& name, ShapeKind kind, const QRectF& place);
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
