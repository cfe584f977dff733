#include "session/TempFiles.h"

#include "platform/Paths.h"
#include "session/Session.h"

#include <QFile>

namespace tessaro {

QString GetFreeFileName(const QString& stem, const QString& folder) {
    const QString place = folder.isEmpty() ? TempFolder : folder;
    QString name = stem;
    for (int number = 0; FileExists(JoinPath({place, name + QStringLiteral(".xls")})); ++number)
        name += QStringLiteral("_%1").arg(number);
    return JoinPath({place, name + QStringLiteral(".xls")});
}

void ClearTempFolder() {
    const QStringList files = FilesOf(TempFolder);
    for (const QString& file : files)
        QFile::remove(JoinPath({TempFolder, file}));
}

} // namespace tessaro
