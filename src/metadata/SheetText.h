#pragma once

#include <QString>

namespace tessaro::metadata {

/// What a sheet of information may cost to show. Sheets come from databases of strangers; a layout takes time with the
/// number of its tags, and twice as much with each table within a table.
struct SheetBounds {
    qsizetype characters = 100000; ///< of text
    qsizetype source = 4000000;    ///< characters of the source, pictures within it among them
    qsizetype work = 20000;        ///< tags, those within n tables counted 2^(n-1) times
};
/// The bounds of many sheets one below the other.
constexpr SheetBounds AllSheetsBounds{2000000, 40000000, 100000};

/// A sheet as markup that is safe to lay out: every element closed in its place, nothing nested deeper than a reader
/// could see, no comments and no scripts. Plain text comes with its lines kept. A sheet that costs more than one sheet
/// may, or more than is left, comes as its plain text under a line that says so. What it costs is taken from `left`.
[[nodiscard]] QString SheetAsHtml(const QString& sheet, SheetBounds& left);

} // namespace tessaro::metadata
