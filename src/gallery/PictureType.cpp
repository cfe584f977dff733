#include "gallery/PictureType.h"

#include "session/Strings.h"

namespace tessaro {

const QString& MetafileType() {
    static const QString type = QStringLiteral("image/x-emf");
    return type;
}

const QString& TypeForTexts() {
    static const QString pixels = QStringLiteral("image/png");
    return LanguageIsRightToLeft() ? pixels : MetafileType();
}

} // namespace tessaro
