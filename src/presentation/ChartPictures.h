#pragma once

#include "office/Chart.h"

#include <QIcon>
#include <QPalette>

namespace tessaro {

/// A small drawing of a kind of chart in the palette's colours, with the accent on one part; sharp at any size.
[[nodiscard]] QIcon ChartPicture(office::ChartKind kind, const QPalette& palette, QSize size, qreal ratio);

} // namespace tessaro
