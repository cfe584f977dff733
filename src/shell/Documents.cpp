#include "shell/Documents.h"

#include "platform/ShellOpen.h"
#include "session/ErrorSink.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/OpenOutside.h"
#include "shell/frmDocument.h"

namespace tessaro {

QString DocumentFile(const QString& folderSetting, const QString& fileSetting, const QString& extension) {
    for (const QString& kind : {extension, QStringLiteral(".htm")}) {
        const QString path = LocalizedFileName(Setting(folderSetting), Setting(fileSetting), kind);
        if (!path.isEmpty()) return path;
    }
    return {};
}

bool OpenDocument(const QString& folderSetting, const QString& fileSetting, const QString& extension) {
    const QString path = DocumentFile(folderSetting, fileSetting, extension);
    if (path.isEmpty()) {
        LogNote(QStringLiteral("there is no document for \"%1\"").arg(fileSetting));
        return false;
    }
    if (!path.endsWith(QLatin1String(".htm"), Qt::CaseInsensitive)) return OpenOutside(path);
    if (!ShellOpen(path)) ShowPage([=] { return DocumentFile(folderSetting, fileSetting, extension); });
    return true;
}

void ShowHelpFileLinks(int item) {
    switch (item) {
    case 0:
        OpenDocument(QStringLiteral("Help Folder"), QStringLiteral("Help File Name"), QStringLiteral(".hlp"));
        break;
    case 2:
        OpenDocument(QStringLiteral("Tour Folder"), QStringLiteral("Tour File Name"), QStringLiteral(".pps"));
        break;
    case 3:
        if (HasHelpLink(3)) OpenOutside(Setting(QStringLiteral("Helpdesk Link")));
        break;
    default:
        break;
    }
}

bool HasHelpLink(int item) {
    if (item == 3) return !Setting(QStringLiteral("Helpdesk Link")).trimmed().isEmpty();
    return item == 0 || item == 2;
}

} // namespace tessaro
