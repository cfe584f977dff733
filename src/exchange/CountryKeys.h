#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace tessaro {

/// The three letters of each country by the spelling keys (SpellingKey) of its usual names: the short ones in the
/// languages of the program, and those that international organisations use in their tables.
[[nodiscard]] const QHash<QString, QByteArray>& CountryKeys();

} // namespace tessaro
