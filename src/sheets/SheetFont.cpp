#include "sheets/SheetFont.h"

#include "session/LanguageName.h"
#include "session/Session.h"
#include "session/Settings.h"

#include <QFontDatabase>

namespace tessaro {

office::CellStyle SheetFont::Style() const {
    office::CellStyle style;
    if (!name.isEmpty()) style.fontName = name;
    if (const QString latin = LatinFontBeside(name); !name.isEmpty() && !latin.isEmpty()) style.latinFontName = latin;
    if (size > 0) style.fontSize = size;
    style.bold = bold;
    style.italic = italic;
    return style;
}

SheetFont ListFont() {
    const bool english = LanguageIsEnglish();
    double size = ProductFontSize;
    if (!english && SettingFlag(QStringLiteral("USE DEFAULT FONT SIZE")))
        size = SettingNumber(QStringLiteral("DEFAULT FONT SIZE"));
    return {english ? Setting(QStringLiteral("DEFAULT FONT")) : ProductFont, size > 0 ? size : 10,
            ProductFontStyle == 2 || ProductFontStyle == 3, ProductFontStyle == 1 || ProductFontStyle == 3};
}

SheetFont TextFont(const SheetFont& body) {
    if (LanguageIsEnglish()) return body;
    return {ProductFont.isEmpty() ? body.name : ProductFont, ProductFontSize > 0 ? double(ProductFontSize) : body.size,
            body.bold, body.italic};
}

QString LatinFontBeside(const QString& family) {
    const QList<QFontDatabase::WritingSystem> systems = QFontDatabase::writingSystems(family);
    return systems.isEmpty() || systems.contains(QFontDatabase::Latin) ? QString()
                                                                       : Setting(QStringLiteral("DEFAULT FONT"));
}

} // namespace tessaro
