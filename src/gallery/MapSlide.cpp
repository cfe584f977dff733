#include "gallery/MapSlide.h"

#include "gallery/PictureType.h"
#include "office/Error.h"
#include "office/FirstPage.h"
#include "office/SpreadsheetApplication.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

namespace tessaro {

namespace {

constexpr int kPixelWidth = 2400; ///< sharp on any projector
constexpr int kMargin = 24;

QByteArray WithoutMargins(const QByteArray& png) {
    const QImage page = QImage::fromData(png).convertToFormat(QImage::Format_ARGB32);
    const QRect ink = InkOf(page);
    if (ink.isNull()) return {};
    // Outside the page the picture would be clear.
    QImage picture(ink.size() + QSize(2 * kMargin, 2 * kMargin), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.drawImage(QPoint(kMargin, kMargin), page, ink);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

} // namespace

bool HasMapPage(const office::Workbook& book) {
    const office::Worksheet sheet = book.Sheet(1);
    return sheet.HasShape(kMapPicture) && sheet.ShapeNames().size() > 1;
}

// Of a copy that isn't shown, so that the workbook on show isn't touched.
QByteArray PictureOfMapPage(const office::Workbook& book) {
    const QTemporaryDir place;
    const QString file = place.filePath(QStringLiteral("map.xls"));
    book.SaveCopy(file);
    const office::Workbook copy = office::SpreadsheetApplication::Hosted().OpenWorkbook(file);
    const QByteArray picture = WithoutMargins(office::FirstSheetAsPng(copy, kPixelWidth));
    if (picture.isEmpty()) throw office::Error(office::Failure::Call, QStringLiteral("the page of the map is empty"));
    return picture;
}

} // namespace tessaro
