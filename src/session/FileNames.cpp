#include "session/FileNames.h"

namespace tessaro {

QString CleanFileName(const QString& name) {
    QString clean = name;
    for (QChar& c : clean)
        if (QStringLiteral("\\/:*<>|?[]\"").contains(c) || c < QLatin1Char(' ')) c = QLatin1Char('_');
    return clean;
}

bool IsForbiddenInFileName(QChar c) {
    return c.unicode() < 32 || c.unicode() == 127 || QStringLiteral("\\/:*?\"<>|").contains(c);
}

} // namespace tessaro
