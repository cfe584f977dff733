#pragma once

#include "office/CellStyle.h"

#include <QByteArray>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace tessaro::office {

class Document;
class Range;

enum class ChartKind { Column, Bar, Line, Pie, Area, Scatter };

/// A chart on a sheet, live on its block of cells. Every function throws Error.
class Chart final {
  public:
    /// Puts a chart of a range on a sheet. `columnHeaders` and `rowHeaders` tell whether the first row and the first
    /// column of the range are names.
    static Chart Add(const std::shared_ptr<Document>& document, int sheet, ChartKind kind, const Range& data,
                     bool columnHeaders, bool rowHeaders, const QRectF& place);
    [[nodiscard]] static int CountOn(const std::shared_ptr<Document>& document, int sheet);
    /// The chart of a number from 1 on a sheet.
    [[nodiscard]] static Chart At(const std::shared_ptr<Document>& document, int sheet, int number);
    Chart(std::shared_ptr<Document> document, int sheet, int number);

    void SetKind(ChartKind kind);
    [[nodiscard]] ChartKind Kind() const;
    /// Each row of the block is a series, and the column heads stand on the X axis; otherwise each column is one.
    void SetSeriesInRows(bool inRows);
    [[nodiscard]] bool SeriesInRows() const;
    /// Empty takes the title away.
    void SetTitle(const QString& title);
    [[nodiscard]] QString Title() const;
    /// Empty takes one away.
    void SetAxisTitles(const QString& xAxis, const QString& yAxis);
    /// Of the axis along which the points stand, of that of the values, and of the one on the other side.
    [[nodiscard]] QStringList AxisTitles() const;
    void SetLegend(bool shown, bool below = false);
    /// Takes away the tinted background of plot and legend and the legend's frame. Axes show plain numbers, not those
    /// of the first cell's format.
    void SetPlain();
    /// How the axis of the values shows its numbers: "#,##0", "General"; a scatter chart's other axis too where told.
    void SetValueFormat(const QString& code, bool alsoAlong = false);
    /// How the axis along which the points stand shows its numbers.
    void SetAlongFormat(const QString& code);
    /// Measures these series, counted from 1, on an axis of their own on the other side. Of a chart of lines.
    void SetSecondAxis(const std::vector<int>& series, const QString& title);
    [[nodiscard]] bool HasSecondAxis() const;
    /// Marks the values of these series, counted from 1, and lets their lines go on where values are missing.
    void SetSymbols(const std::vector<int>& series);
    /// Writes its share of the whole beside each slice of a pie.
    void SetShares();
    /// Areas or columns stand on each other, so that none hides another.
    void SetStacked(bool stacked);
    /// Whether lines join the points of a scatter chart.
    void SetLines(bool shown);
    /// Font of everything in the chart; of the axes' labels; of a legend that is shown.
    void SetFont(const QString& name, double points);
    void SetAxisFont(const QString& name, double points);
    void SetLegendFont(const QString& name, double points);
    /// Colour of a series, counted from 1, as a palette slot.
    void SetSeriesColor(int series, int colorIndex);
    [[nodiscard]] int SeriesCount() const;
    void SetPlace(const QRectF& points);
    [[nodiscard]] QRectF Place() const;
    /// Drawn as "image/png" (this many pixels wide) or "image/x-emf".
    [[nodiscard]] QByteArray AsPicture(const QString& mimeType, int pixelWidth = 1600) const;

  private:
    std::shared_ptr<Document> document_;
    int sheet_;
    int number_;
};

} // namespace tessaro::office
