#include "session/ErrorSink.h"

#include "jet/values/Error.h"
#include "session/Log.h"
#include "session/MessageAnswer.h"
#include "session/Session.h"

#include <system_error>
#include <utility>

namespace tessaro {

namespace {

constexpr unsigned kKeyNotUnique = 35602;

const char* innermostProcedure = "";

unsigned NumberOf(const std::exception& error) {
    if (const auto* database = dynamic_cast<const jet::Error*>(&error))
        return static_cast<unsigned>(database->number());
    if (const auto* system = dynamic_cast<const std::system_error*>(&error))
        return static_cast<unsigned>(system->code().value());
    return 0;
}

/// Numbers of the database stand in the log as people look them up: 0x80040E37; others are decimal.
QString Spelt(unsigned number) {
    return number > 0xFFFF ? QLatin1String("0x") + QString::number(number, 16).toUpper() : QString::number(number);
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

void ReportError(FileError number, const QString& description, const QString& procedureName, bool alwaysShow) {
    ReportError(static_cast<unsigned>(number), description, procedureName, alwaysShow);
}

void ReportError(unsigned number, const QString& description, const QString& procedureName, bool alwaysShow) {
    if (number == kKeyNotUnique || number == static_cast<unsigned>(jet::ErrorNumber::NoSuchTable)) return;
    WriteLogLine(QStringLiteral("%1\t%2\t%3").arg(procedureName, Spelt(number), description));
    // who has stopped a statement knows
    const bool stopped = number == static_cast<unsigned>(jet::ErrorNumber::Interrupted);
    if ((SilentErrors || stopped) && !alwaysShow) return;
    const QString text = QStringLiteral("%1\r%2\r\r%3").arg(Spelt(number), description, procedureName);
    Message message;
    message.text = WithoutPasswords(text);
    AnswerMessage(std::move(message));
}

} // namespace tessaro
