#pragma once

#include "office/CellStyle.h"

#include <QString>

/// The fonts of sheets.
namespace tessaro {

/// A font of a sheet. What has no name or no size leaves that to the sheet.
struct SheetFont {
    QString name;
    double size = 10; ///< points
    bool bold = false;
    bool italic = false;

    /// As a look of cells, with LatinFontBeside for latin letters and digits.
    [[nodiscard]] office::CellStyle Style() const;
    bool operator==(const SheetFont&) const = default;
};

/// The language's font for lists: ProductFont with its size and style; in English DEFAULT FONT, elsewhere DEFAULT FONT
/// SIZE where the settings say so.
[[nodiscard]] SheetFont ListFont();
/// A font for texts of the data in a table whose numbers are in `body`: the language's name and size where that isn't
/// English, the weight of `body`.
[[nodiscard]] SheetFont TextFont(const SheetFont& body);
/// The font for latin letters and digits beside texts in a font that has none; empty where it has them.
[[nodiscard]] QString LatinFontBeside(const QString& family);

} // namespace tessaro
