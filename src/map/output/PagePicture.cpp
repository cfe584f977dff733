#include "map/output/PagePicture.h"

#include "map/output/MapPlaces.h"
#include "map/output/PagePainter.h"
#include "platform/Files.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace tessaro {

namespace {

constexpr double kPointsOfInch = 72;
constexpr double kPrintResolution = 300;
constexpr int kFine = 10; ///< steps of a point to which points of lines are rounded
constexpr double kMetersOfInch = 0.0254;

bool Paint(QPaintDevice& device, const MapPage& page, double pixelsOfPoint) {
    QPainter painter;
    if (!painter.begin(&device)) return false;
    PaintPage(painter, page, NotesOfMapData(), pixelsOfPoint);
    return painter.end();
}

bool WriteSvg(QBuffer& target, const MapPage& page) {
    const QSize size = (PageSize(page.draft.layout) * kFine).toSize();
    QSvgGenerator svg;
    svg.setOutputDevice(&target);
    svg.setTitle(page.draft.title.text);
    svg.setResolution(static_cast<int>(kPointsOfInch) * kFine);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(), size));
    return Paint(svg, page, kFine);
}

bool WritePdf(QBuffer& target, const MapPage& page) {
    QPdfWriter pdf(&target);
    pdf.setTitle(page.draft.title.text);
    pdf.setResolution(static_cast<int>(kPointsOfInch) * kFine);
    const bool lying = PlacesOf(page.draft.layout).landscape;
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setPageOrientation(lying ? QPageLayout::Landscape : QPageLayout::Portrait);
    pdf.setPageMargins({});
    return Paint(pdf, page, kFine);
}

bool WriteImage(QBuffer& target, const MapPage& page, const QString& kind) {
    constexpr double kScale = kPrintResolution / kPointsOfInch;
    QImage image((PageSize(page.draft.layout) * kScale).toSize(), QImage::Format_RGB32);
    if (image.isNull()) return false;
    image.fill(Qt::white);
    image.setDotsPerMeterX(qRound(kPrintResolution / kMetersOfInch));
    image.setDotsPerMeterY(qRound(kPrintResolution / kMetersOfInch));
    return Paint(image, page, kScale) && image.save(&target, qPrintable(kind));
}

} // namespace

bool SavePagePicture(const QString& path, const MapPage& page) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly)) return false;
    const QString kind = QFileInfo(path).suffix().toLower();
    bool made = false;
    if (kind == QLatin1String("svg"))
        made = WriteSvg(buffer, page);
    else if (kind == QLatin1String("pdf"))
        made = WritePdf(buffer, page);
    else
        made = WriteImage(buffer, page, kind);
    buffer.close();
    return made && ReplaceFile(path, bytes);
}

} // namespace tessaro
