#include "session/LanguageName.h"

#include "session/Session.h"
#include "session/Settings.h"

namespace tessaro {

QString CodeOfLanguage(const QString& name) {
    const qsizetype open = name.indexOf(QLatin1Char('['));
    const qsizetype close = name.indexOf(QLatin1Char(']'), open + 1);
    return open < 0 || close < 0 ? QString() : name.mid(open + 1, close - open - 1);
}

bool LanguageIsEnglish() {
    return Language.compare(Setting(QStringLiteral("ENG_LNG")), Qt::CaseInsensitive) == 0;
}

} // namespace tessaro
