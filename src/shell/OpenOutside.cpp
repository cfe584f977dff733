#include "shell/OpenOutside.h"

#include "platform/ShellOpen.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Strings.h"

namespace tessaro {

bool OpenOutside(const QString& target) {
    if (ShellOpen(target)) return true;
    LogNote(QStringLiteral("the desktop opened no program for ") + target);
    ShowMessage(GetText(QStringLiteral("TS_NothingOpens")).replace(QLatin1String("%1"), target), MessageType::Ok,
                MessageIcon::Warning, {}, false);
    return false;
}

} // namespace tessaro
