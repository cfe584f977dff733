#pragma once

#include <QLocale>
#include <QString>

namespace tessaro {

/// True when a Datavalue reads as a decimal number: sign, digits and one '.', perhaps an exponent, blanks around it
/// allowed.
[[nodiscard]] bool ReadsAsNumber(const QString& datavalue);
/// A Datavalue as the user's system writes numbers: its group and decimal separators, every digit kept. Text that is no
/// number stands as it is.
[[nodiscard]] QString WithSeparators(const QString& datavalue, const QLocale& locale);

} // namespace tessaro
