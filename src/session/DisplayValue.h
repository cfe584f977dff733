#pragma once

#include <QLocale>
#include <QString>

#include <optional>

/// How a value (a text in Datavalue) becomes a number, and how numbers are shown and typed.
namespace tessaro {

/// True when a Datavalue reads as a decimal number: sign, digits and one '.', perhaps an exponent, blanks around it
/// allowed.
[[nodiscard]] bool ReadsAsNumber(const QString& datavalue);
/// The number of a Datavalue that reads as one; nothing for other texts, words such as "nan" among them, and for what
/// is beyond a double.
[[nodiscard]] std::optional<double> NumberOf(const QString& datavalue);
/// A Datavalue as the user's system writes numbers: its group and decimal separators, every digit kept. Text that is no
/// number stands as it is.
[[nodiscard]] QString WithSeparators(const QString& datavalue, const QLocale& locale);
/// The text with the locale's own digits, such as those of Arabic.
[[nodiscard]] QString InDigitsOf(const QLocale& locale, QString text);
/// A number with so many decimals, rounded half away from zero, "." as decimal point.
[[nodiscard]] QString WithDecimals(double value, int decimals);
/// A Datavalue as the program displays it: with the separators and digits of the user's system where the user wants
/// them, else as it stands.
[[nodiscard]] QString DisplayedValue(const QString& datavalue);
/// The same for texts in files, which keep the digits 0 to 9.
[[nodiscard]] QString FiledValue(const QString& datavalue);

/// A number that a user typed. What the program displays is read as that number: with separators the locale's form goes
/// before the data's (a point, no groups), without them the other way round. Nothing when it isn't a finite number.
[[nodiscard]] std::optional<double> NumberTyped(const QString& text, const QLocale& locale, bool separators);
/// The same with the user's locale and choice of separators.
[[nodiscard]] std::optional<double> NumberTyped(const QString& text);

} // namespace tessaro
