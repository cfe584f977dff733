#pragma once

#include <QImage>
#include <QString>

/// The kinds of picture that go to slides.
namespace tessaro {

/// The name of a map's picture on its sheet.
inline const QString kMapPicture = QStringLiteral("Picture 1");

/// The rectangle around everything that is drawn on a page (ARGB32); empty for a blank one.
[[nodiscard]] QRect InkOf(const QImage& page);

/// A vector picture (metafile), sharp at every size.
[[nodiscard]] const QString& MetafileType();
/// The type of picture for slides in the current language. A metafile draws the letters of Arabic unjoined and mixes up
/// lines of two directions, so languages with such scripts get a picture of pixels.
[[nodiscard]] const QString& TypeForTexts();

} // namespace tessaro
