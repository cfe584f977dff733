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

QString MakeFileNameSafe(const QString& name) {
    QString safe = name;
    for (QChar& c : safe)
        if (IsForbiddenInFileName(c)) c = QLatin1Char('_');
    return safe;
}

QString CutForDisk(const QString& name) {
    constexpr qsizetype kMostBytes = 150;
    QString cut = name;
    while (cut.toUtf8().size() > kMostBytes)
        cut.chop(cut.size() > 1 && cut.back().isLowSurrogate() ? 2 : 1);
    return cut;
}

} // namespace tessaro
