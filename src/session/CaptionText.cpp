#include "session/CaptionText.h"

namespace tessaro {

CaptionText ReadCaption(const QString& caption) {
    CaptionText text;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption.at(i) == QLatin1Char('&') && i + 1 < caption.size()) {
            ++i;
            if (text.letter < 0 && caption.at(i) != QLatin1Char('&')) text.letter = text.plain.size();
        }
        text.plain += caption.at(i);
    }
    return text;
}

QString CaptionOfName(const QString& name) {
    QString caption = name;
    return caption.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace tessaro
