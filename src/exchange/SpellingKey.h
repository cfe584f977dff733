#pragma once

#include <QString>

namespace tessaro {

/// What two spellings of one name have in common: its words without case, accents, signs, the small words "of", "the",
/// "and" and their like in the languages of the program, with usual abbreviations written out ("Rep.", "Dem.", "St."),
/// in the order of the alphabet.
[[nodiscard]] QString SpellingKey(const QString& name);
/// How many letters two texts differ by: added, left out, changed or swapped with the next; at most `most` + 1.
[[nodiscard]] int LettersApart(const QString& a, const QString& b, int most);

} // namespace tessaro
