#pragma once

#include <QList>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

namespace tessaro::office {

/// A cell's content: nothing, a number, a text that stays a text ("00123", "=1+1"), or true and false, which are read
/// back as 1 and 0.
using Cell = std::variant<std::monostate, double, QString, bool>;
/// Rows of cells; all rows have the same length.
using Block = std::vector<std::vector<Cell>>;
/// Rows of formulas; all rows have the same length.
using FormulaBlock = std::vector<std::vector<QString>>;

enum class Align { General, Left, Center, Right };
enum class VerticalAlign { Top, Center, Bottom };

/// Looks of cells; what isn't set stays as it is. Colours are slots of the workbook's palette, 1 to 56.
struct CellStyle {
    std::optional<QString> fontName = {};
    std::optional<QString> latinFontName = {}; ///< for latin letters and digits, where fontName has none
    std::optional<double> fontSize = {};       ///< points
    std::optional<bool> bold = {};
    std::optional<bool> italic = {};
    std::optional<bool> underline = {};
    std::optional<int> fontColorIndex = {};
    std::optional<int> interiorColorIndex = {}; ///< solid background; 0 takes it away
    std::optional<Align> horizontal = {};
    std::optional<VerticalAlign> vertical = {};
    std::optional<bool> wrapText = {};
    std::optional<bool> rightToLeft = {};     ///< the way a text is read
    std::optional<int> orientation = {};      ///< degrees, counter-clockwise
    std::optional<QString> numberFormat = {}; ///< English codes: "@", "0.00", "#,##0"; "General"
    auto operator<=>(const CellStyle&) const = default;
};

/// Lines round and inside a block.
enum Edge : unsigned {
    EdgeLeft = 1,
    EdgeTop = 2,
    EdgeRight = 4,
    EdgeBottom = 8,
    InsideVertical = 16,
    InsideHorizontal = 32,
    Outline = EdgeLeft | EdgeTop | EdgeRight | EdgeBottom,
    AllEdges = Outline | InsideVertical | InsideHorizontal
};
enum class LineWeight { None, Hairline, Thin, Medium, Thick };
enum class LineStyle { Continuous, Dotted, Dashed };
struct Border {
    LineWeight weight = LineWeight::Thin;
    LineStyle style = LineStyle::Continuous;
    int colorIndex = 1;
};

/// A piece of text within one cell with a look of its own.
struct TextRun {
    QString text = {};
    bool superscript = false;
    CellStyle style = {}; ///< font name, size, bold, italic, underline, colour only
};

/// One key of a sort: a row or column of the sorted block, counted from 1.
struct SortKey {
    int index = 1;
    bool ascending = true;
};

} // namespace tessaro::office
