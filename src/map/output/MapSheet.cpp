#include "map/output/MapSheet.h"

#include "map/output/LegendShapes.h"
#include "office/Error.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "sheets/SheetLayout.h"
#include "sheets/ValueCells.h"

#include <QBuffer>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tessaro {

namespace {

constexpr double kUsualHeight = 13;    ///< of a row that holds nothing
constexpr double kGapHeight = 9;       ///< of the rows that part titles, map, legend and sources
constexpr double kLeastHeight = 0.8;   ///< of a row without a text
constexpr double kTitleSpace = 4;      ///< added to the heights of titles and of the disclaimer
constexpr double kLeastPrint = 0.45;   ///< what would be printed smaller goes over several pages
constexpr double kPrintDots = 300;     ///< to the inch
constexpr double kLeastMapWidth = 320; ///< points for titles and sources, however narrow the map is
constexpr int kMapColumns = MapPlaces::LastMapColumn - MapPlaces::MapColumn + 1;
constexpr double kSmaller = 0.9; ///< of the legend's font, for its note

QString Plain(const char* key) {
    return PlainText(QLatin1String(key));
}

/// A font with the map's own name and size where it has none.
SheetFont Complete(SheetFont font) {
    if (font.name.isEmpty()) font.name = Setting(QStringLiteral("MAP_FONT"));
    if (font.size <= 0) font.size = SettingNumber(QStringLiteral("MAP_FONT_SIZE"));
    if (font.size <= 0) font.size = 10;
    return font;
}

office::PageLine LineAtLeft(const char* setting) {
    QString text = Setting(QLatin1String(setting));
    text.replace(QLatin1Char('&'), QLatin1String("&&"));
    office::CellStyle font = Complete({{}, 0, false, false}).Style();
    return office::PageLine({text, font}, {}, {});
}

double SumOf(const std::vector<double>& lengths) {
    return std::accumulate(lengths.begin(), lengths.end(), 0.0);
}

} // namespace

QString MapSheet::PictureName() {
    return QStringLiteral("Picture 1");
}

MapSheet::MapSheet(office::Worksheet sheet, const MapSheetContents& contents)
    : sheet_(std::move(sheet)), contents_(contents), draft_(contents.draft), places_(PlacesOf(draft_.layout)),
      legend_(PlanLegend(draft_.classes, places_, contents.pointsOfPixel, contents.size.height())) {}

int MapSheet::LastColumn() const {
    return places_.LegendIsBeside() ? ColumnOfBlock(legend_.blocks) - 1 : MapPlaces::LastMapColumn;
}

int MapSheet::LegendLastRow() const {
    return places_.legendRow + legend_.rows + (contents_.note.isEmpty() ? 0 : 1);
}

// Sources stand where the layout says; a very long legend moves them down.
int MapSheet::SourceRow() const {
    return std::max(places_.sourceRow, LegendLastRow() + 2);
}

double MapSheet::Width(int column, int lastColumn) const {
    return std::accumulate(columns_.begin() + column - 1, columns_.begin() + lastColumn, 0.0);
}

void MapSheet::WriteTexts() {
    sheet_.SetName(Plain("Map"));
    if (LanguageIsRightToLeft()) sheet_.SetRightToLeft(true);
    SetColumns();
    CollectLines();
    SetRows();
    SetUpPage();
    for (const Line& line : lines_)
        Write(line);
}

// The template's widths, except where swatches need more or less room, or texts beside the map, or where a narrow map
// would stand far from the legend beside it.
void MapSheet::SetColumns() {
    if (places_.LegendIsBeside() && contents_.size.width() < places_.room.width()) {
        const double width = std::max(contents_.size.width(), kLeastMapWidth);
        for (int column = MapPlaces::MapColumn; column <= MapPlaces::LastMapColumn; ++column)
            sheet_.SetColumnWidth(column, width / kMapColumns / MapPlaces::Digit);
    }
    for (int block = 0; block < legend_.blocks; ++block) {
        const int column = ColumnOfBlock(block);
        if (places_.LegendIsBeside()) {
            sheet_.SetColumnWidth(column, legend_.swatchWidth / MapPlaces::Digit);
            sheet_.SetColumnWidth(column + 1, (legend_.textWidth + MapPlaces::Digit) / MapPlaces::Digit);
        } else {
            const double pair = sheet_.Cells(1, column, 1, column + 1).Size().width();
            sheet_.SetColumnWidth(column, legend_.swatchWidth / MapPlaces::Digit);
            sheet_.SetColumnWidth(column + 1, (pair - legend_.swatchWidth) / MapPlaces::Digit);
        }
    }
    for (int column = 1; column <= LastColumn(); ++column)
        columns_.push_back(sheet_.Cells(1, column).Size().width());
}

void MapSheet::CollectLines() {
    Add({MapPlaces::TitleRow, 1, LastColumn(), draft_.title.text, draft_.title.font});
    Add({MapPlaces::SubTitleRow, 1, LastColumn(), draft_.subTitle.text, draft_.subTitle.font});
    CollectLegend();
    CollectSources();
}

void MapSheet::CollectLegend() {
    const int first = places_.legendRow;
    Add({first, places_.legendColumn, LastColumn(), draft_.legendTitle.text, draft_.legendTitle.font});
    for (int i = 0; i < static_cast<int>(legend_.lines.size()); ++i) {
        const LegendLine& line = legend_.lines[static_cast<std::size_t>(i)];
        const int column = ColumnOfBlock(legend_.BlockOf(i));
        Add({first + 1 + legend_.RowOf(i), column + 1, column + legend_.columnsOfBlock - 1, line.text, line.font,
             line.underline});
    }
    SheetFont small = legend_.lines.back().font;
    small.size *= kSmaller;
    small.italic = true;
    small.bold = false;
    Add({first + 1 + legend_.rows, places_.legendColumn, LastColumn(), contents_.note, small});
}

void MapSheet::CollectSources() {
    const SheetFont font = legend_.lines.front().font;
    SheetFont head = font;
    head.bold = true;
    int row = SourceRow();
    Add({row, 1, LastColumn(), Plain("Comm_Source"), head});
    for (const QString& source : contents_.sources)
        Add({++row, 1, LastColumn(), source, font});
    Add({++row, 1, LastColumn(), draft_.disclaimer.text, draft_.disclaimer.font});
    Add({++row, 1, LastColumn(), Setting(QStringLiteral("MAP_FOOTER")), draft_.disclaimer.font});
}

void MapSheet::Add(const Line& line) {
    lines_.push_back(line);
    lines_.back().font = Complete(line.font);
}

double MapSheet::HeightOf(const Line& line) const {
    return line.text.isEmpty() ? 0 : RowHeightOf(line.text, line.font, Width(line.column, line.lastColumn));
}

void MapSheet::SetRows() {
    rows_.assign(static_cast<std::size_t>(lines_.back().row), kUsualHeight);
    for (int i = 0; i < legend_.rows; ++i)
        RowHeight(places_.legendRow + 1 + i) = legend_.heights[static_cast<std::size_t>(i)];
    for (const Line& line : lines_)
        RowHeight(line.row) = std::max(RowHeight(line.row), HeightOf(line));
    for (const int title : {MapPlaces::TitleRow, MapPlaces::SubTitleRow})
        RowHeight(title) += kTitleSpace;
    RowHeight(lines_.back().row - 1) += kTitleSpace; // the disclaimer's
    RowHeight(MapPlaces::MapRow - 1) = kGapHeight;
    if (places_.LegendIsBeside()) {
        const double taken =
            std::accumulate(rows_.begin() + MapPlaces::MapRow - 1, rows_.begin() + LegendLastRow(), 0.0);
        Share(contents_.size.height() + kGapHeight - taken, LegendLastRow() + 1, SourceRow() - 1);
    } else {
        Share(contents_.size.height() + kGapHeight, MapPlaces::MapRow, places_.legendRow - 1);
        Share(kGapHeight, LegendLastRow() + 1, SourceRow() - 1);
    }
    SendRows();
}

// Rows without texts of their own: the map stands over them, or they part what is above and below.
void MapSheet::Share(double height, int first, int last) {
    const double each = std::max(height / std::max(last - first + 1, 1), kLeastHeight);
    for (int row = first; row <= last; ++row)
        RowHeight(row) = each;
}

void MapSheet::SendRows() {
    for (std::size_t first = 0; first < rows_.size();) {
        std::size_t end = first + 1;
        while (end < rows_.size() && rows_[end] == rows_[first])
            ++end;
        sheet_.SetRowHeights(static_cast<int>(first) + 1, static_cast<int>(end), rows_[first]);
        first = end;
    }
}

void MapSheet::SetUpPage() {
    const double scale = PrintScale(places_, {SumOf(columns_), SumOf(rows_)});
    sheet_.SetPageSetup({.landscape = places_.landscape,
                         .fitToPagesWide = 1,
                         .fitToPagesTall = scale < kLeastPrint ? 0 : 1,
                         .header = LineAtLeft("MAP_HEADER"),
                         .footer = LineAtLeft("MAP_FOOTER")});
}

void MapSheet::Write(const Line& line) {
    if (line.text.isEmpty()) return;
    office::CellStyle look = line.font.Style();
    SetLeading(look);
    look.numberFormat = QStringLiteral("@");
    look.vertical = office::VerticalAlign::Center;
    look.underline = line.underline;
    office::Range cell = sheet_.Cells(line.row, line.column);
    if (TextPoints(line.text, line.font) > Width(line.column, line.lastColumn)) {
        look.wrapText = true;
        if (line.lastColumn > line.column) sheet_.Cells(line.row, line.column, line.row, line.lastColumn).Merge();
    }
    cell.SetStyle(look);
    cell.SetValue(TextCell(line.text));
}

QRectF MapSheet::CellOf(int row, int column) const {
    const double top = row > 1 ? sheet_.Cells(1, 1, row - 1, 1).Size().height() : 0;
    const double left = column > 1 ? sheet_.Cells(1, 1, 1, column - 1).Size().width() : 0;
    return {QPointF(left, top), sheet_.Cells(row, column).Size()};
}

void MapSheet::DrawLegend() {
    std::vector<office::ShapePlan> shapes;
    for (int i = 0; i < static_cast<int>(legend_.lines.size()); ++i) {
        const LegendLine& line = legend_.lines[static_cast<std::size_t>(i)];
        if (!line.look) continue;
        const QRectF cell = CellOf(places_.legendRow + 1 + legend_.RowOf(i), ColumnOfBlock(legend_.BlockOf(i)));
        const SwatchPlace place{cell, legend_.MarkerSize(*line.look)};
        for (office::ShapePlan& shape :
             SwatchShapes(*line.look, draft_.classes.kind, place, QStringLiteral("Legend %1").arg(i + 1)))
            shapes.push_back(std::move(shape));
    }
    sheet_.AddShapes(shapes);
}

// As many pixels as 300 to the inch of the printed map are.
void MapSheet::InsertMap() {
    const double inches = contents_.size.width() / 72 * PrintScale(places_, {SumOf(columns_), SumOf(rows_)});
    const QImage image = contents_.picture(static_cast<int>(std::ceil(inches * kPrintDots)));
    QByteArray png;
    QBuffer buffer(&png);
    if (image.isNull() || !buffer.open(QIODevice::WriteOnly) ||
        !image.convertToFormat(QImage::Format_RGB32).save(&buffer, "PNG"))
        throw office::Error(office::Failure::Call, QStringLiteral("there is no memory for the picture of the map"));
    const QPointF corner = CellOf(MapPlaces::MapRow, MapPlaces::MapColumn).topLeft();
    sheet_.AddPicture(PictureName(), png, {corner, contents_.size});
}

} // namespace tessaro
