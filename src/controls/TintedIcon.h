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

namespace tessaro::theme {

/// A picture of the common graphics folder as an icon (vector where there is one), tinted for the palette. Missing:
/// null icon.
[[nodiscard]] QIcon Icon(const QString& fileName);

} // namespace tessaro::theme
