#pragma once

#include "map/output/LegendPlan.h"
#include "office/Workbook.h"

#include <QImage>
#include <QStringList>

#include <functional>
#include <vector>

namespace tessaro {

/// What a map's sheet shows beside the texts and classes of the draft.
struct MapSheetContents {
    const MapDraft& draft;
    QSizeF size;          ///< of the map on the sheet, in points
    double pointsOfPixel; ///< of markers, there for one of the screen
    std::function<QImage(int pixelWidth)> picture;
    QString note; ///< below the classes; empty for none
    QStringList sources;
};

/// Writes the first sheet of a map's workbook: titles, the map, its legend, sources, disclaimer and footer, on one
/// printed page.
class MapSheet final {
  public:
    MapSheet(office::Worksheet sheet, const MapSheetContents& contents);

    /// Throws office::Error.
    void WriteTexts();
    void DrawLegend();
    void InsertMap();

    /// The name of the map's picture, by which slides find it.
    [[nodiscard]] static QString PictureName();

  private:
    struct Line {
        int row;
        int column;
        int lastColumn; ///< a text that is longer than up to there is wrapped
        QString text;
        SheetFont font;
        bool underline = false;
    };
    [[nodiscard]] int LastColumn() const;
    [[nodiscard]] int LegendLastRow() const;
    [[nodiscard]] int SourceRow() const;
    [[nodiscard]] int ColumnOfBlock(int block) const { return places_.legendColumn + block * legend_.columnsOfBlock; }
    [[nodiscard]] double Width(int column, int lastColumn) const;
    [[nodiscard]] double HeightOf(const Line& line) const;
    void SetColumns();
    void CollectLines();
    void CollectLegend();
    void CollectSources();
    void Add(const Line& line);
    [[nodiscard]] double& RowHeight(int row) { return rows_[static_cast<std::size_t>(row - 1)]; }
    void SetRows();
    void Share(double height, int first, int last);
    void SendRows();
    void SetUpPage();
    void Write(const Line& line);
    [[nodiscard]] QRectF CellOf(int row, int column) const;

    office::Worksheet sheet_;
    const MapSheetContents& contents_;
    const MapDraft& draft_;
    const MapPlaces& places_;
    const LegendPlan legend_;
    std::vector<double> columns_; ///< their widths, of the first at 0
    std::vector<double> rows_;    ///< their heights likewise
    std::vector<Line> lines_;
};

} // namespace tessaro
