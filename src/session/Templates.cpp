#include "session/Templates.h"

#include "platform/Paths.h"
#include "session/Session.h"

namespace tessaro {

QString TemplateFile(const QString& name) {
    return FindPath(JoinPath({AppPath, QStringLiteral("Bin/Template"), name}));
}

} // namespace tessaro
