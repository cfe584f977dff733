#pragma once

#include <QString>

#include <optional>

namespace tessaro {

/// The text with the decimal mark and the digits of the user's system changed to "." and 0 to 9; blanks around it are
/// taken off. An empty text gives "0".
[[nodiscard]] QString ToDotDecimal(const QString& value);
/// A number with a decimal point in the form in which results are kept: whole for 0 decimals, with so many digits
/// behind the point for more, and none before it when it is less than 1 (".50"). Rounded half away from zero, by its
/// first 15 digits as in a sheet. Blank or unreadable decimals, and a text that is no number, leave it as it is.
[[nodiscard]] QString FormatToDecimals(const QString& value, const QString& decimals);
/// A sum in the 15 significant digits that a spreadsheet keeps, without the noise of adding fractions.
[[nodiscard]] QString SumText(double sum);
/// The number of decimals that a user typed, 0 to 15; nothing when it is blank or none.
[[nodiscard]] std::optional<int> DecimalsTyped(const QString& decimals);

} // namespace tessaro
