#pragma once

#include "jet/engine/Connection.h"
#include "jet/engine/OpenError.h"
#include "session/DatabasePassword.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

/// Runs statements on the open database.
namespace tessaro {

/// An opened database file, or why the engine refuses it.
struct OpenedFile {
    std::shared_ptr<jet::Connection> connection;
    std::optional<jet::OpenError> refusal; ///< nothing for a wrong password and for a blank path
};
/// As CreateTheConnection, with the reason of a refusal.
[[nodiscard]] OpenedFile OpenFile(const QString& path);
/// A new open connection, or nothing when `path` is blank or can't be opened (reported under the current trap).
/// Remembers ConnectionText.
[[nodiscard]] std::shared_ptr<jet::Connection> CreateTheConnection(const QString& path);

/// A recordset with texts as QString. One that failed to open is closed: at its end, without rows.
class Records final {
  public:
    Records() = default;
    explicit Records(jet::Recordset rows) : rows_(std::move(rows)) {}

    [[nodiscard]] bool isOpen() const { return rows_.isOpen(); }
    [[nodiscard]] bool atEnd() const { return rows_.atEnd(); }
    [[nodiscard]] bool isEmpty() const { return rows_.atEnd() && rows_.atStart(); }
    void MoveNext() { rows_.MoveNext(); }
    [[nodiscard]] QString Text(std::size_t field) const; ///< Null gives the empty text
    [[nodiscard]] QString Text(const char* field) const;
    [[nodiscard]] qint64 Number(std::size_t field) const { return rows_.Get(field).toInteger(); }
    [[nodiscard]] qint64 Number(const char* field) const { return rows_.Get(field).toInteger(); }
    [[nodiscard]] bool Flag(const char* field) const { return rows_.Get(field).toBoolean(); }
    [[nodiscard]] bool IsNull(std::size_t field) const { return rows_.Get(field).isNull(); }
    [[nodiscard]] jet::Recordset& rows() { return rows_; }
    /// The first column of all rows from here on, as one text with `delimiter` between them.
    [[nodiscard]] QString Joined(const QString& delimiter = QStringLiteral(","));

  private:
    jet::Recordset rows_;
};

/// Runs a statement on Connection (or on the one given). False when it failed: the error is reported, nothing changed.
bool Execute(const QString& sql, jet::Connection* on = nullptr);
/// Opens a query on Connection (or on the one given); a failure is reported and gives a closed recordset.
[[nodiscard]] Records Select(const QString& sql, jet::CursorType cursor = jet::CursorType::Static,
                             jet::Connection* on = nullptr);

/// Text made safe for single quotes in SQL: ' doubled, Chr(0) removed, trimmed.
[[nodiscard]] QString QuoteDoubled(const QString& text);
/// The text as SQL has it: made safe, within single quotes. A list has commas between: 'A','B'.
[[nodiscard]] QString Quoted(const QString& text);
[[nodiscard]] QString QuotedList(const QStringList& texts);

} // namespace tessaro
