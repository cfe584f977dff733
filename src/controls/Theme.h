#pragma once

#include <QColor>
#include <QPalette>

/// The look: Fusion with one palette read from the product's colours, one accent, an 8-pixel grid, icons of one family.
namespace tessaro::theme {

constexpr int kGrid = 8; ///< distances are multiples of this
constexpr int kIconSize = 20;

/// Decides between light and dark: as the desktop has it, or TESSARO_THEME=light|dark.
void ChooseShades();
[[nodiscard]] bool IsDark();
/// The palette of the product's colours for these shades.
[[nodiscard]] QPalette ProductPalette();
[[nodiscard]] QColor Accent(); ///< from APP SEL BG COLOR, made readable on the palette
[[nodiscard]] QColor MutedText();
[[nodiscard]] QColor TextColor(const QColor& wished); ///< a colour of the user's for texts, lighter on a dark ground
[[nodiscard]] QColor HairLine();                      ///< separators
[[nodiscard]] QColor SurfaceRaised();                 ///< strips and headers
[[nodiscard]] QColor HoverSurface();                  ///< what lies under the mouse, from APP MOUSE MOVE BG COLOR

} // namespace tessaro::theme
