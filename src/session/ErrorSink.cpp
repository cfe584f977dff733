#include "session/ErrorSink.h"

#include "jet/values/Error.h"
#include "platform/Clock.h"
#include "platform/Home.h"
#include "platform/Paths.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <system_error>

namespace tessaro {

namespace {

constexpr unsigned KeyNotUnique = 35602;
constexpr qint64 LogLimit = 1024 * 1024;

const char* innermostProcedure = "";

unsigned NumberOf(const std::exception& error) {
    if (const auto* database = dynamic_cast<const jet::Error*>(&error))
        return static_cast<unsigned>(database->number());
    if (const auto* system = dynamic_cast<const std::system_error*>(&error))
        return static_cast<unsigned>(system->code().value());
    return 0;
}

QString WithoutPasswords(QString text) {
    return text.replace(QString::fromStdString(DatabasePassword()), QLatin1String("***"));
}

/// Numbers of the database stand in the log as people look them up: 0x80040E37; others are decimal.
QString Spelt(unsigned number) {
    return number > 0xFFFF ? QLatin1String("0x") + QString::number(number, 16).toUpper() : QString::number(number);
}

/// Makes room: the full log becomes Tessaro.log.1, whose forerunner goes.
void RotateLog(const QString& path) {
    if (QFileInfo(path).size() < LogLimit) return;
    const QString previous = path + QLatin1String(".1");
    QFile::remove(previous);
    QFile::rename(path, previous);
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

} // namespace

ErrorTrap::ErrorTrap(const char* procedureName) : outer_(innermostProcedure) {
    innermostProcedure = procedureName;
}

ErrorTrap::~ErrorTrap() {
    innermostProcedure = outer_;
}

QString ErrorTrap::CurrentProcedure() {
    return QString::fromUtf8(innermostProcedure);
}

void ErrorTrap::Report(const std::exception& error) {
    ReportError(error, CurrentProcedure());
}

void ReportError(const std::exception& error, const QString& procedureName, bool alwaysShow) {
    ReportError(NumberOf(error), QString::fromUtf8(error.what()), procedureName, alwaysShow);
}

void ReportError(unsigned number, const QString& description, const QString& procedureName, bool alwaysShow) {
    if (number == KeyNotUnique || number == static_cast<unsigned>(jet::ErrorNumber::NoSuchTable)) return;
    WriteLogLine(QStringLiteral("%1\t%2\t%3").arg(procedureName, Spelt(number), description));
    if (SilentErrors && !alwaysShow) return;
    const QString text = QStringLiteral("%1\r%2\r\r%3").arg(Spelt(number), description, procedureName);
    ShowMessage(WithoutPasswords(text), MessageType::Ok, 103, {}, false);
}

void LogNote(const QString& text) {
    WriteLogLine(QLatin1String("note\t0\t") + text);
}

QString LogFile() {
    return JoinPath({CacheFolder.isEmpty() ? WritableRoot() : CacheFolder, QStringLiteral("Tessaro.log")});
}

} // namespace tessaro
