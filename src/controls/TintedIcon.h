#pragma once

#include <QIcon>
#include <QString>

namespace tessaro {

/// An icon that draws a vector picture of the icon family sharp at any size and in the palette's colours: its ink
/// becomes the text colour, its accent the theme's accent; disabled icons are pale, selected ones have the colour of
/// selected text.
/// A file that can't be read gives a null icon. Icons of one file share their drawings.
[[nodiscard]] QIcon TintedIcon(const QString& svgFile);

} // namespace tessaro
