#pragma once

#include <QString>

/// The kinds of picture that go to slides.
namespace tessaro {

/// A vector picture (metafile), sharp at every size.
[[nodiscard]] const QString& MetafileType();
/// The type of picture for slides in the current language. A metafile draws the letters of Arabic unjoined and mixes up
/// lines of two directions, so languages with such scripts get a picture of pixels.
[[nodiscard]] const QString& TypeForTexts();

} // namespace tessaro
