#pragma once

#include "office/Workbook.h"

#include <QByteArray>

namespace tessaro::office {

/// The first printed page of a workbook's first sheet as PNG, this many pixels wide: the whole paper with its margins.
/// Throws Error.
[[nodiscard]] QByteArray FirstPageAsPng(const Workbook& book, int pixelWidth);

} // namespace tessaro::office
