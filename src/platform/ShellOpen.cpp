#include "platform/ShellOpen.h"

#include "platform/Paths.h"
#include "platform/Rights.h"

#include <QDesktopServices>
#include <QFileInfo>

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
    return QDesktopServices::openUrl(url);
}

void SetShellOpener(std::function<bool(const QUrl&)> opener) {
    TheOpener() = std::move(opener);
}

} // namespace tessaro
