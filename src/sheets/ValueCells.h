#pragma once

#include "office/CellStyle.h"

#include <QString>

/// Values as cells of a sheet.
namespace tessaro {

/// The most decimals that values are shown with.
constexpr int kMostDecimals = 15;

/// A text as a cell, cut to what a cell holds; an empty one leaves the cell empty.
[[nodiscard]] office::Cell TextCell(const QString& text);
/// A data value as a cell: a number where it reads as one, else its text; a blank one leaves the cell empty.
[[nodiscard]] office::Cell ValueCell(const QString& value);
/// The decimals that a value has, at most MostDecimals: none for a text or a number with an exponent.
[[nodiscard]] int DecimalsOf(const QString& value);
/// A number with zeros behind it up to so many decimals; all else as it stands.
[[nodiscard]] QString WithZeros(const QString& value, int decimals);
/// The number format that shows a value with the decimals that it has; "General" where it has an exponent or is text.
[[nodiscard]] QString ValueFormat(const QString& value);

} // namespace tessaro
