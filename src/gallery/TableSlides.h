#pragma once

#include "office/Workbook.h"

#include <QByteArray>
#include <QList>

#include <vector>

/// Cuts a table into pictures for slides.
namespace tessaro {

/// The sizes of a table, in points, from which the number of its slides follows.
struct TableMeasures {
    office::SheetHeads heads = {};
    std::vector<double> columns = {}; ///< width of each column, from the first one on
    double headHeight = 0;            ///< of the rows of heads
    double bodyHeight = 0;            ///< of all rows below them
    int bodyRows = 0;
};
[[nodiscard]] TableMeasures SizesOf(const office::Worksheet& sheet);

/// Rows or columns of a sheet, counted from 1.
struct SheetLines {
    int first;
    int last;
    bool operator==(const SheetLines&) const = default;
};

/// How a table is cut up: each slide shows the heads, a run of columns and a run of rows.
struct SlidePlan {
    office::SheetHeads heads = {};
    std::vector<SheetLines> columns = {};
    std::vector<SheetLines> rows = {};

    [[nodiscard]] int Count() const { return static_cast<int>(columns.size() * rows.size()); }
};

/// The plan with the fewest slides on which the text can still be read; one slide for a table that is readable as a
/// whole. Heads that would take more than half of a slide aren't repeated.
[[nodiscard]] SlidePlan PlanSlides(const TableMeasures& sizes);

/// True when the active sheet holds anything.
[[nodiscard]] bool HoldsTable(const office::Workbook& book);
/// The active sheet's used block as one picture; empty when the sheet is.
[[nodiscard]] QByteArray PictureOfTable(const office::Workbook& book);
/// The pictures of the slides of a plan for the active sheet, row by row. Throws office::Error.
[[nodiscard]] QList<QByteArray> PicturesOfTable(const office::Workbook& book, const SlidePlan& plan);

} // namespace tessaro
