#include "session/Query.h"

#include "session/ErrorSink.h"
#include "session/JetCopies.h"
#include "session/Session.h"

namespace tessaro {

namespace {

/// The connection a statement runs on; an error for the common sink when there is none.
jet::Connection& ConnectionFor(jet::Connection* on) {
    jet::Connection* connection = on != nullptr ? on : Connection.get();
    if (connection == nullptr) throw jet::Error(jet::ErrorNumber::EngineError, "There is no open database.");
    return *connection;
}

} // namespace

OpenedFile OpenFile(const QString& path) {
    if (path.trimmed().isEmpty()) return {};
    ConnectionText =
        QStringLiteral("Provider = Microsoft.jet.oledb.4.0;Data source =%1;Persist Security Info=False").arg(path);
    try {
        return {jet::Connection::Open(FileToOpen(path).toStdString(), DatabasePassword()), {}};
    } catch (const jet::OpenError& error) {
        ErrorTrap::Report(error);
        return {nullptr, error};
    } catch (const std::exception& error) {
        ErrorTrap::Report(error);
        return {};
    }
}

std::shared_ptr<jet::Connection> CreateTheConnection(const QString& path) {
    return OpenFile(path).connection;
}

QString Records::Text(std::size_t field) const {
    if (const auto text = rows_.TextView(field))
        return QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size()));
    return QString::fromStdString(rows_.Get(field).toText());
}

QString Records::Text(const char* field) const {
    return QString::fromStdString(rows_.Get(field).toText());
}

QString Records::Joined(const QString& delimiter) {
    QStringList parts;
    for (; !rows_.atEnd(); rows_.MoveNext())
        parts << Text(std::size_t{0});
    return parts.join(delimiter);
}

bool Execute(const QString& sql, jet::Connection* on) {
    try {
        ConnectionFor(on).Execute(sql.toStdString());
        return true;
    } catch (const std::exception& error) {
        ErrorTrap::Report(error);
        return false;
    }
}

Records Select(const QString& sql, jet::CursorType cursor, jet::Connection* on) {
    try {
        return Records(ConnectionFor(on).OpenRecordset(sql.toStdString(), cursor));
    } catch (const std::exception& error) {
        ErrorTrap::Report(error);
        return {};
    }
}

QString QuoteDoubled(const QString& text) {
    QString safe = text;
    safe.replace(QLatin1Char('\''), QLatin1String("''")).remove(QChar(0));
    return safe.trimmed();
}

QString Quoted(const QString& text) {
    return QLatin1Char('\'') + QuoteDoubled(text) + QLatin1Char('\'');
}

QString QuotedList(const QStringList& texts) {
    QStringList quoted;
    for (const QString& text : texts)
        quoted << Quoted(text);
    return quoted.join(QLatin1Char(','));
}

} // namespace tessaro
