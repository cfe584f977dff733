#include "session/Log.h"

#include "platform/Clock.h"
#include "platform/Home.h"
#include "platform/Paths.h"
#include "session/DatabasePassword.h"
#include "session/Session.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tessaro {

namespace {

constexpr qint64 kLogLimit = 1024 * 1024;

/// Makes room: the full log becomes Tessaro.log.1, whose forerunner goes.
void RotateLog(const QString& path) {
    if (QFileInfo(path).size() < kLogLimit) return;
    const QString previous = path + QLatin1String(".1");
    QFile::remove(previous);
    QFile::rename(path, previous);
}

} // namespace

QString WithoutPasswords(QString text) {
    return text.replace(QString::fromStdString(DatabasePassword()), QLatin1String("***"));
}

void WriteLogLine(const QString& text) {
    const QString path = LogFile();
    QDir().mkpath(FolderOf(path));
    RotateLog(path);
    QString line = WithoutPasswords(text);
    line.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QByteArray bytes =
        (Now().toString(Qt::ISODateWithMs) + QLatin1Char('\t') + line + QLatin1Char('\n')).toUtf8();
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append)) file.write(bytes);
}

void LogNote(const QString& text) {
    WriteLogLine(QLatin1String("note\t0\t") + text);
}

QString LogFile() {
    return JoinPath({CacheFolder.isEmpty() ? WritableRoot() : CacheFolder, QStringLiteral("Tessaro.log")});
}

} // namespace tessaro
