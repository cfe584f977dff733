#include "layers/MapPictureFile.h"

#include "layers/MapPicture.h"
#include "platform/Files.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace tessaro {

namespace {

constexpr double kScreenResolution = 96; ///< pixels to the inch
constexpr int kFine = 8;                 ///< steps of one pixel to which points of lines are rounded

/// Draws on a device whose pixels are `kFine` times as small as those of the screen.
bool PaintFine(QPaintDevice& device, const LayerStack& layers, const MapBox& extent, QSize size) {
    QPainter painter;
    if (!painter.begin(&device)) return false;
    PaintMap(painter, layers, ViewOf(layers, extent, size * kFine), kFine);
    return painter.end();
}

bool WriteSvg(QBuffer& target, const LayerStack& layers, const MapBox& extent, QSize size) {
    QSvgGenerator svg;
    svg.setOutputDevice(&target);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(), size * kFine));
    svg.setResolution(static_cast<int>(kScreenResolution));
    return PaintFine(svg, layers, extent, size);
}

bool WritePdf(QBuffer& target, const LayerStack& layers, const MapBox& extent, QSize size) {
    QPdfWriter pdf(&target);
    pdf.setResolution(static_cast<int>(kScreenResolution * kFine));
    pdf.setPageSize(QPageSize(QSizeF(size) / kScreenResolution, QPageSize::Inch, {}, QPageSize::ExactMatch));
    pdf.setPageMargins({});
    return PaintFine(pdf, layers, extent, size);
}

} // namespace

bool SaveMapPicture(const QString& path, const LayerStack& layers, const MapBox& extent, QSize size, double scale) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    const QString kind = QFileInfo(path).suffix().toLower();
    if (size.isEmpty() || !buffer.open(QIODevice::WriteOnly)) return false;
    bool made = false;
    if (kind == QLatin1String("svg"))
        made = WriteSvg(buffer, layers, extent, size);
    else if (kind == QLatin1String("pdf"))
        made = WritePdf(buffer, layers, extent, size);
    else
        made = MapImage(layers, extent, size, scale).save(&buffer, qPrintable(kind));
    buffer.close();
    return made && ReplaceFile(path, bytes);
}

} // namespace tessaro
