#include "platform/Registry.h"

#include "platform/Files.h"
#include "platform/IniFile.h"
#include "platform/Paths.h"

#include <QStandardPaths>
#include <QStringList>

namespace tessaro {

namespace {

const QString FileName = QStringLiteral("registry.ini");

/// The files that are asked, in order.
QStringList RegistryFiles(const QString& appPath) {
    QStringList files;
    const QString home = qEnvironmentVariable("TESSARO_HOME");
    if (!home.isEmpty()) files << JoinPath({home, FileName});
    files << QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, QStringLiteral("tessaro/") + FileName);
    files << JoinPath({appPath, FileName});
    return files;
}

bool IsString(const QString& value) {
    return !value.isNull() && !value.startsWith(QLatin1String("dword:"), Qt::CaseInsensitive) &&
           !value.startsWith(QLatin1String("hex:"), Qt::CaseInsensitive);
}

} // namespace

QString GetRegistryValue(const QString& appPath, const QString& root, const QString& subKey, const QString& valueName,
                         const QString& defaultValue) {
    const QString section = root + QLatin1Char('\\') + subKey;
    const QStringList files = RegistryFiles(appPath);
    for (const QString& file : files) {
        const auto contents = ReadWholeFile(FindPath(file));
        if (!contents) continue;
        const QString value = IniFile::Parse(*contents).ReadUncut(section, valueName);
        if (IsString(value)) return value.left(value.indexOf(QChar(0)));
    }
    return defaultValue;
}

} // namespace tessaro
