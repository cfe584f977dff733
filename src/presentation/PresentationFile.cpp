#include "presentation/PresentationFile.h"

#include "session/FileNames.h"
#include "session/Strings.h"

#include <QLocale>

namespace tessaro {

QString ShowOutcome::MessageKey() const {
    switch (result) {
    case ShowResult::NoRows:
        return QStringLiteral("253");
    case ShowResult::NoYAxis:
        return QStringLiteral("TS_YAxisEmpty");
    case ShowResult::NoData:
        return QStringLiteral("256");
    case ShowResult::TemplateMissing:
        return QStringLiteral("011");
    case ShowResult::NothingToCompare:
        return QStringLiteral("TS_NothingToCompare");
    case ShowResult::Built:
    case ShowResult::TooManyColumns:
    case ShowResult::TooManyRows:
    case ShowResult::GivenUp:
        break;
    }
    return {};
}

QString ShowOutcome::Message() const {
    const QString number = QLocale::system().toString(count);
    if (result == ShowResult::TooManyColumns)
        return GetText(QStringLiteral("TS_TooManyColumns"))
            .replace(QStringLiteral("%1"), number)
            .replace(QStringLiteral("%2"), CaptionOf(field));
    if (result == ShowResult::Built && hidden > 0)
        return GetText(QStringLiteral("TS_HiddenValues"))
            .replace(QStringLiteral("%1"), QLocale::system().toString(hidden))
            .replace(QStringLiteral("%2"), GetText(QStringLiteral("TS_SheetData")));
    if (result == ShowResult::TooManyRows)
        return GetText(QStringLiteral("TS_TooManyRows")).replace(QStringLiteral("%1"), number);
    return {};
}

QString CleanedTitle(const QString& title, const QString& fallback) {
    QString name = title;
    name.remove(QStringLiteral(".xls"), Qt::CaseInsensitive);
    name = CutForDisk(MakeFileNameSafe(name)).trimmed();
    while (name.startsWith(QLatin1Char('.')) || name.startsWith(QLatin1Char('-')))
        name.remove(0, 1); // neither hidden nor taken for an option
    while (name.endsWith(QLatin1Char('.')))
        name.chop(1);
    name = name.trimmed();
    return name.isEmpty() ? fallback : name;
}

} // namespace tessaro
