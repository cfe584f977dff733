#include "platform/CommandLine.h"

#include "platform/Paths.h"

#include <QCoreApplication>

namespace tessaro {

QString CommandLineValue(const QString& line, const QString& switchName, SwitchAttribute attribute) {
    const QString trimmed = line.trimmed();
    const qsizetype at = trimmed.toLower().indexOf(switchName.toLower());
    if (trimmed.isEmpty() || at < 0) return {};
    const qsizetype start = at + 2;
    const qsizetype end = trimmed.indexOf(QLatin1Char('/'), start);
    QString value = trimmed.mid(start, end < 0 ? -1 : end - start).trimmed();
    if (attribute == SwitchAttribute::Directory && value.endsWith(QLatin1Char('\\')) && FolderExists(value))
        value.chop(1);
    return value;
}

QString CommandLine() {
    return QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
}

} // namespace tessaro
