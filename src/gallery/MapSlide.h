#pragma once

#include "office/Workbook.h"

#include <QByteArray>

/// The page of a map as a picture for slides.
namespace tessaro {

/// True when a workbook's first sheet holds a map together with a legend.
[[nodiscard]] bool HasMapPage(const office::Workbook& book);
/// The printed page of that sheet as PNG, with titles, legend and sources, but without margins, header and footer.
/// Throws office::Error.
[[nodiscard]] QByteArray PictureOfMapPage(const office::Workbook& book);

} // namespace tessaro
