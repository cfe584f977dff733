#include "office/WorkFile.h"

#include "office/Error.h"
#include "platform/Rights.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace tessaro::office {

namespace {

Error Unwritable(const QString& file) {
    return {Failure::File, QStringLiteral("\"%1\" can't be written").arg(file)};
}

/// The file itself where the name is a link to it.
QString Meant(const QString& target) {
    const QFileInfo file(target);
    return file.isSymLink() && file.exists() ? file.canonicalFilePath() : target;
}

} // namespace

WorkFile::WorkFile(const QString& target)
    : target_(Meant(target)), folder_(QFileInfo(target_).absolutePath() + QStringLiteral("/.tessaro-XXXXXX")),
      name_(folder_.filePath(QStringLiteral("new"))) {
    const QFileInfo old(target_);
    if (target.isEmpty() || old.isDir() || (old.exists() && !old.isWritable()) || !folder_.isValid())
        throw Unwritable(target);
}

bool WorkFile::IsWritten() const {
    const QDir folder(folder_.path());
    const QStringList longer = folder.entryList({QStringLiteral("new-*")}, QDir::Files | QDir::Hidden);
    if (longer.isEmpty()) return QFileInfo(name_).size() > 0;
    QFile::remove(name_);
    return QFile::rename(folder.filePath(longer.first()), name_);
}

void WorkFile::Replace() {
    const QFileInfo old(target_);
    if (old.exists())
        QFile::setPermissions(name_, old.permissions());
    else
        GiveUsersRights(name_);
    if (std::rename(QFile::encodeName(name_).constData(), QFile::encodeName(target_).constData()) != 0)
        throw Unwritable(target_);
}

} // namespace tessaro::office
