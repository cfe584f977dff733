#pragma once

#include "office/Worksheet.h"
#include "session/Strings.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

/// The head that all sheets of calculations have, and the texts of their cells.
namespace tessaro {

/// A label in the first column and what stands beside it, by their row.
struct HeaderLine {
    int row;
    QString label;
    QString value;
};

/// Writes the top of a calculation's sheet: its title, 14 points, bold and italic, and labelled lines below it.
void WriteSheetTop(const office::Worksheet& sheet, const QString& title, const std::vector<HeaderLine>& lines);

/// The text of a cell as it was typed or calculated: numbers in full, with a decimal point; errors as they are shown.
[[nodiscard]] QString CellText(const office::Cell& cell);

} // namespace tessaro
