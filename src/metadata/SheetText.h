#pragma once

#include <QString>

/// Turns the text of an information sheet into bounded, safe markup.
namespace tessaro::metadata {

/// Bounds of the work that an information sheet may cause. Sheets come with databases from elsewhere. The time of a
/// layout grows with the number of tags and doubles with each nested table.
struct SheetBounds {
    qsizetype characters = 100000; ///< of text
    qsizetype source = 4000000;    ///< characters of the source, pictures within it among them
    qsizetype work = 20000;        ///< tags; one inside n nested tables counts 2^(n-1) times
};
/// The bounds of many sheets shown one below the other.
constexpr SheetBounds kAllSheetsBounds{2000000, 40000000, 100000};

/// A sheet as markup that is safe to lay out: every element closed in its place, nothing nested deeper than a reader
/// could see, no comments and no scripts. Plain text comes with its lines kept. A sheet that costs more than one sheet
/// may, or more than is left, comes as its plain text under a line that says so. What it costs is taken from `left`.
[[nodiscard]] QString SheetAsHtml(const QString& sheet, SheetBounds& left);

} // namespace tessaro::metadata
