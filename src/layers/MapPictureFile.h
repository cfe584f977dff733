#pragma once

#include "layers/LayerStack.h"

#include <QSize>

namespace tessaro {

/// Saves a map as a picture of its kind: ".svg" and ".pdf" hold lines and letters, others (".png") the pixels of
/// MapImage. `size` is that on the screen; a PDF has one page of that size at 96 to the inch, `scale` counts for pixels
/// only. False when the file can't be written.
[[nodiscard]] bool SaveMapPicture(const QString& path, const LayerStack& layers, const MapBox& extent, QSize size,
                                  double scale);

} // namespace tessaro
