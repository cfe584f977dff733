#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QApplication;

/// The look: Fusion with one palette read from the product's colours, one accent, an 8-pixel grid, icons of one family.
namespace tessaro::theme {

constexpr int Grid = 8; ///< distances are multiples of this
constexpr int IconSize = 20;

/// Style, palette (light or dark by the desktop's or TESSARO_THEME=light|dark) and base font of the application.
void Apply(QApplication& application);
[[nodiscard]] bool IsDark();
[[nodiscard]] QColor Accent(); ///< from APP SEL BG COLOR, made readable on the palette
[[nodiscard]] QColor MutedText();
[[nodiscard]] QColor TextColor(const QColor& wished); ///< a colour of the user's for texts, lighter on a dark ground
[[nodiscard]] QColor HairLine();                      ///< separators
[[nodiscard]] QColor SurfaceRaised();                 ///< strips and headers
[[nodiscard]] QColor HoverSurface();                  ///< what lies under the mouse, from APP MOUSE MOVE BG COLOR

/// A picture of the common graphics folder as an icon (vector where there is one), tinted for the palette. Missing:
/// null icon.
[[nodiscard]] QIcon Icon(const QString& fileName);

} // namespace tessaro::theme
