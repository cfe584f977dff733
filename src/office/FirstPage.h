#pragma once

#include "office/Workbook.h"

#include <QByteArray>

namespace tessaro::office {

/// Everything on a workbook's first sheet as PNG, about this many pixels wide, on white, as it is printed on one page
/// without header and footer. The paper around it is white too. It changes the sheet's page setup: for a copy that is
/// then closed. Throws Error.
[[nodiscard]] QByteArray FirstSheetAsPng(const Workbook& book, int pixelWidth);

} // namespace tessaro::office
