#include "session/JetCopies.h"

#include "jet/engine/DatabaseFile.h"
#include "platform/Paths.h"
#include "session/Session.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFileInfo>

namespace tessaro {

namespace {

QString ShortHash(const QString& text) {
    return QString::fromLatin1(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex().left(12));
}

} // namespace

bool IsGenuineJetFile(const QString& path) {
    if (path.isEmpty()) return false;
    const QByteArray head = QByteArray::fromStdString(jet::HeadOfFile(FindPath(path).toStdString(), 20));
    return head.startsWith(QByteArray::fromRawData("\0\1\0\0", 4)) &&
           (head.mid(4).startsWith("Standard Jet DB") || head.mid(4).startsWith("Standard ACE DB"));
}

QString FolderOfJetCopies() {
    // In a folder of its own: what lies in DataCacheFolder itself may be listed as a database of the user's.
    return JoinPath({DataCacheFolder, QStringLiteral("Imported")});
}

QString CopyPrefixOfJetFile(const QString& path) {
    const QFileInfo info(FindPath(path));
    return info.completeBaseName() + QLatin1Char('~') + ShortHash(info.absoluteFilePath()) + QLatin1Char('~');
}

QString CopyOfJetFile(const QString& path) {
    const QFileInfo info(FindPath(path));
    const QString state = QStringLiteral("%1 %2").arg(info.size()).arg(info.lastModified().toMSecsSinceEpoch());
    return JoinPath({FolderOfJetCopies(), CopyPrefixOfJetFile(path) + ShortHash(state) + QLatin1String(".mdb")});
}

QString FileToOpen(const QString& path) {
    QString found = FindPath(path);
    if (!IsGenuineJetFile(found)) return found;
    const QString copy = CopyOfJetFile(found);
    return QFileInfo::exists(copy) ? copy : found;
}

} // namespace tessaro
