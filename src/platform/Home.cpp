#include "platform/Home.h"

#include "platform/Paths.h"

#include <QDir>
#include <QStandardPaths>

#include <unistd.h>

namespace tessaro {

QString WritableHome() {
    const QString named = qEnvironmentVariable("TESSARO_HOME");
    if (!named.isEmpty()) return QDir(named).absolutePath();
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString OwnFolder() {
    return JoinPath({WritableHome(), QStringLiteral("Tessaro")});
}

QString WritableRoot() {
    return JoinPath({OwnFolder(), QStringLiteral("TessaroCache")});
}

QString UserMark() {
    return QString::number(::geteuid());
}

} // namespace tessaro
