#pragma once

#include "layers/LayerStack.h"

#include <QIcon>
#include <QPixmap>

namespace tessaro {

/// Name and picture of a style of layers by its number, see LayerLooks.h.
[[nodiscard]] QString NameOfStyle(LayerKind kind, int style);
[[nodiscard]] QPixmap PictureOfStyle(LayerKind kind, int style, const QColor& color, QSize size);
/// Name and picture of what a layer's shapes are.
[[nodiscard]] QString NameOfKind(LayerKind kind);
[[nodiscard]] QIcon IconOfKind(LayerKind kind);

} // namespace tessaro
