#include "platform/ShellOpen.h"

#include "platform/Paths.h"
#include "platform/Rights.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStandardPaths>

#include <utility>

namespace tessaro {

namespace {

std::function<bool(const QUrl&)>& TheOpener() {
    static std::function<bool(const QUrl&)> opener;
    return opener;
}

/// An address with one of the schemes that a product names; everything else is a file.
bool IsAddress(const QString& target) {
    for (const char* scheme : {"http:", "https:", "mailto:", "ftp:", "file:"})
        if (target.startsWith(QLatin1String(scheme), Qt::CaseInsensitive)) return true;
    return target.startsWith(QLatin1String("www."), Qt::CaseInsensitive);
}

/// The kinds by which the desktop may know a program for it, the nearest first.
QStringList KindsOf(const QUrl& url) {
    if (!url.isLocalFile()) return {QStringLiteral("x-scheme-handler/") + url.scheme()};
    const QMimeType type = QMimeDatabase().mimeTypeForFile(url.toLocalFile());
    return QStringList{type.name()} + type.allAncestors();
}

/// True when a list of the desktop ("text/html=firefox.desktop;" on a line) has a program for one of the kinds.
bool Lists(const QString& path, const QStringList& kinds) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine());
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (equals > 0 && kinds.contains(line.left(equals)) && line.mid(equals + 1).trimmed().size() > 1) return true;
    }
    return false;
}

/// False when the desktop has no program for it: the call that opens would say that it went well all the same.
bool HasProgram(const QUrl& url) {
    if (!qEnvironmentVariableIsEmpty("BROWSER")) return true;
    const QStringList kinds = KindsOf(url);
    for (const auto location : {QStandardPaths::GenericConfigLocation, QStandardPaths::ApplicationsLocation})
        for (const QString& folder : QStandardPaths::standardLocations(location))
            for (const char* name : {"mimeapps.list", "mimeinfo.cache", "defaults.list"})
                if (Lists(folder + QLatin1Char('/') + QLatin1String(name), kinds)) return true;
    return false;
}

} // namespace

bool ShellOpen(const QString& target) {
    const QString trimmed = target.trimmed();
    if (trimmed.isEmpty()) return false;
    QUrl url;
    if (IsAddress(trimmed)) {
        url = QUrl::fromUserInput(trimmed);
    } else {
        const QFileInfo file(FindPath(trimmed));
        if (!file.exists()) return false;
        url = QUrl::fromLocalFile(file.absoluteFilePath());
    }
    if (TheOpener()) return TheOpener()(url);
    const UsersRights rights; // what the user makes in the other program is none of our files
    return HasProgram(url) && QDesktopServices::openUrl(url);
}

void SetShellOpener(std::function<bool(const QUrl&)> opener) {
    TheOpener() = std::move(opener);
}

} // namespace tessaro
