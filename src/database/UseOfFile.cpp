#include "database/UseOfFile.h"

#include "platform/Paths.h"
#include "session/JetCopies.h"
#include "session/Session.h"
#include "session/Templates.h"

#include <QFileInfo>

#include <algorithm>
#include <filesystem>

namespace tessaro {

QString DatabaseTemplate() {
    return TemplateFile(QStringLiteral("dbTemp.mdb"));
}

bool IsSameFile(const QString& a, const QString& b) {
    if (SamePath(QFileInfo(FindPath(a)).absoluteFilePath(), QFileInfo(FindPath(b)).absoluteFilePath())) return true;
    std::error_code none; // a path that doesn't exist is no other file
    return std::filesystem::equivalent(FindPath(a).toStdString(), FindPath(b).toStdString(), none);
}

bool IsDatabaseInUse(const QString& path) {
    const QString own[] = {CurrentDatabase, FileToOpen(CurrentDatabase), DatabaseTemplate(),
                           JoinPath({CacheFolder, QStringLiteral("InfoSel.mdb")}),
                           JoinPath({CacheFolder, QStringLiteral("UserSelections.mdb")})};
    return std::ranges::any_of(own, [&](const QString& used) { return IsSameFile(path, used); });
}

} // namespace tessaro
