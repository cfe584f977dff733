#pragma once

#include <QString>

namespace tessaro {

/// A picture of lines and texts, sharp at every size.
[[nodiscard]] const QString& MetafileType();
/// How texts are drawn: a metafile puts the letters of joined scripts side by side, and mixes up lines of two
/// directions, so that languages with such get pixels.
[[nodiscard]] const QString& TypeForTexts();

} // namespace tessaro
