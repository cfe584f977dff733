#include "layers/EncryptShape.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Settings.h"

#include <QDir>
#include <QFileInfo>
#include <QtEndian>

namespace tessaro {

namespace {

constexpr qint64 kLargestFile = 1LL << 30;
constexpr quint32 kSecondWord = 1;

/// Changes the sign of the first word when the file is one that the mode is for.
bool ChangeSign(QByteArray& bytes, char mode) {
    if (bytes.size() < 8 || qFromLittleEndian<quint32>(bytes.constData() + 4) != kSecondWord) return false;
    const auto first = qFromLittleEndian<qint32>(bytes.constData());
    if (mode == 'E' ? first <= 0 : mode != 'D' || first >= 0) return false;
    qToLittleEndian(0U - static_cast<quint32>(first), bytes.data());
    return true;
}

} // namespace

bool EncryptShape(char mode, const QString& path) {
    if (!SettingFlag(QStringLiteral("ENCRYPT_DECRYPT_FILES"))) return false;
    const QString file = FindPath(path);
    auto bytes = ReadWholeFile(file, kLargestFile);
    return bytes && ChangeSign(*bytes, mode) && ReplaceFile(file, *bytes);
}

bool MakeMapFilesFolder() {
    return EmptyFolder(FolderOf(MapFilesFolder)) && QDir().mkpath(MapFilesFolder);
}

QString WorkingCopy(const QString& shapeFile) {
    const QFileInfo source(FindPath(shapeFile));
    const QString base = source.path() + QLatin1Char('/') + source.completeBaseName();
    const QString copy = JoinPath({MapFilesFolder, source.completeBaseName()});
    for (const char* ending : {".shp", ".dbf", ".shx", ".cpg"}) {
        const QString from = FindPath(base + QLatin1String(ending));
        const bool needed = QLatin1String(ending) == QLatin1String(".shp");
        if (!QFileInfo(from).isFile() && !needed) continue;
        if (!CopyPassingFile(from, copy + QLatin1String(ending)) && needed) return {};
    }
    EncryptShape('D', copy + QStringLiteral(".shp"));
    return copy + QStringLiteral(".shp");
}

} // namespace tessaro
