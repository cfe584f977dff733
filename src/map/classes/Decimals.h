#pragma once

#include <cstdint>

namespace tessaro {

// Arithmetic on numbers as they are written, with at most 15 digits: 0.15 is a half at its second decimal, although
// the binary number lies a little below it, and 0.1 + 0.2 is 0.3. Decimals below 0 count as 0.

/// The number that the text with 15 digits stands for; what is left of a sum after it was written out.
[[nodiscard]] double AsWritten(double value);
/// Rounded to so many decimals, a half to the even digit: 2.5 gives 2, 3.5 gives 4.
[[nodiscard]] double RoundHalfEven(double value, int decimals);
/// Rounded to so many decimals, a half away from zero: 1.25 gives 1.3.
[[nodiscard]] double RoundHalfUp(double value, int decimals);
/// The greatest number of so many decimals that is not above the value: -2.4 gives -3.
[[nodiscard]] double RoundDown(double value, int decimals);
/// How the bounds of classes are cut: without decimals downwards, with decimals a half away from zero.
[[nodiscard]] double CutToDecimals(double value, int decimals);
/// The step from one class to the next: 1 without decimals, else 0.1, 0.01 and so on.
[[nodiscard]] double StepOfDecimals(int decimals);

} // namespace tessaro
