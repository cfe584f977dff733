#include "office/WorkFile.h"

#include "office/Error.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace tessaro::office {

namespace {

Error Unwritable(const QString& file) {
    return {Failure::File, QStringLiteral("\"%1\" can't be written").arg(file)};
}

/// What this program's own new files get; the process that has written this one keeps all from other users.
QFile::Permissions PermissionsOfNewFiles(const QTemporaryDir& folder) {
    QFile made(folder.filePath(QStringLiteral("permissions")));
    return made.open(QIODevice::WriteOnly) ? made.permissions() : QFile::ReadOwner | QFile::WriteOwner;
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

void WorkFile::Replace() {
    const QFileInfo old(target_);
    QFile::setPermissions(name_, old.exists() ? old.permissions() : PermissionsOfNewFiles(folder_));
    if (std::rename(QFile::encodeName(name_).constData(), QFile::encodeName(target_).constData()) != 0)
        throw Unwritable(target_);
}

} // namespace tessaro::office
