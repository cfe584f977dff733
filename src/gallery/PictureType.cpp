#include "gallery/PictureType.h"

#include "session/Strings.h"

#include <algorithm>

namespace tessaro {

namespace {

bool IsInk(QRgb pixel) {
    return qAlpha(pixel) > 16 && (qRed(pixel) < 240 || qGreen(pixel) < 240 || qBlue(pixel) < 240);
}

} // namespace

QRect InkOf(const QImage& page) {
    int left = page.width();
    int right = -1;
    int top = page.height();
    int bottom = -1;
    for (int y = 0; y < page.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(page.constScanLine(y));
        for (int x = 0; x < page.width(); ++x) {
            if (!IsInk(line[x])) continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
        }
    }
    return right < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

const QString& MetafileType() {
    static const QString type = QStringLiteral("image/x-emf");
    return type;
}

const QString& TypeForTexts() {
    static const QString pixels = QStringLiteral("image/png");
    return LanguageIsRightToLeft() ? pixels : MetafileType();
}

} // namespace tessaro
