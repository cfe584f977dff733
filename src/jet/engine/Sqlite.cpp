#include "jet/engine/Sqlite.h"

#include "jet/engine/ColumnStore.h"
#include "jet/engine/Version.h"

#include <array>
#include <charconv>
#include <utility>

namespace jet {

namespace {

// A function of ours failed: "JET:<number>:<text>"
bool IsOwn(std::string_view message, ErrorNumber& number, std::string& text) {
    if (!message.starts_with("JET:")) return false;
    unsigned code = 0;
    const auto [end, failure] = std::from_chars(message.data() + 4, message.data() + message.size(), code);
    if (failure != std::errc{} || end == message.data() + message.size()) return false;
    number = static_cast<ErrorNumber>(code);
    text.assign(end + 1, message.data() + message.size());
    return true;
}

ErrorNumber NumberOf(int code, std::string_view message) {
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErrorNumber::Busy;
    case SQLITE_NOMEM:
    case SQLITE_TOOBIG:
        return ErrorNumber::TooLarge;
    case SQLITE_READONLY:
        return ErrorNumber::ReadOnly;
    case SQLITE_CONSTRAINT:
        return ErrorNumber::ConstraintFailed;
    case SQLITE_INTERRUPT:
        return ErrorNumber::Interrupted;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return ErrorNumber::NotADatabase;
    default:
        break;
    }
    constexpr std::array<std::pair<std::string_view, ErrorNumber>, 7> texts = {
        {{"no such table", ErrorNumber::NoSuchTable},
         {"no such column", ErrorNumber::NoSuchColumn},
         {"already exists", ErrorNumber::AlreadyExists},
         {"there is already", ErrorNumber::AlreadyExists},
         {"parser stack overflow", ErrorNumber::SyntaxError},
         {"Expression tree is too large", ErrorNumber::SyntaxError},
         {"too many ", ErrorNumber::SyntaxError}}};
    for (const auto& [part, number] : texts)
        if (message.find(part) != std::string_view::npos) return number;
    return ErrorNumber::EngineError;
}

// "CHECK constraint failed: length("Name") <= 50" is how a field's width is kept.
std::string BrokenCheck(std::string_view condition) {
    constexpr std::string_view kLength = "length(\"";
    constexpr std::string_view kMost = "\") <= ";
    const std::size_t end = condition.find(kMost);
    if (!condition.starts_with(kLength) || end == std::string_view::npos)
        return "A value does not meet the condition of its table: " + std::string(condition) + ".";
    return "The text is too long for the field '" +
           std::string(condition.substr(kLength.size(), end - kLength.size())) + "', which holds " +
           std::string(condition.substr(end + kMost.size())) + " characters.";
}

/// Our sentence for a message of SQLite; empty for messages that are passed on as they are.
std::string Reworded(std::string_view message) {
    constexpr std::string_view kCheck = "CHECK constraint failed: ";
    constexpr std::string_view kUnique = "UNIQUE constraint failed: ";
    constexpr std::string_view kNotNull = "NOT NULL constraint failed: ";
    constexpr std::array<std::pair<std::string_view, std::string_view>, 11> sentences = {
        {{"parser stack overflow", "The statement is nested too deeply."},
         {"Expression tree is too large", "The statement is nested too deeply."},
         {"too many terms in compound SELECT", "The statement has too many queries in a union."},
         {"too many terms in", "The statement groups or sorts by too many fields."},
         {"too many ", "The statement names too many fields, tables or values."},
         {"at most 64 tables", "The statement joins too many tables."},
         {"string or blob too big", "A text or binary value is too long."},
         {"out of memory", "The statement takes too much memory."},
         {"attempt to write a readonly database", "The database can't be changed."},
         {"interrupted", "The statement was stopped."},
         {"database or disk is full", "The disk is full."}}};
    if (message.starts_with(kCheck)) return BrokenCheck(message.substr(kCheck.size()));
    if (message.starts_with(kUnique))
        return "The value of '" + std::string(message.substr(kUnique.size())) + "' is there already.";
    if (message.starts_with(kNotNull))
        return "The field '" + std::string(message.substr(kNotNull.size())) + "' needs a value.";
    for (const auto& [start, sentence] : sentences)
        if (message.starts_with(start)) return std::string(sentence);
    return {};
}

void Bind(sqlite3_stmt* statement, const std::vector<std::string>& parameters) {
    int position = 0;
    for (const std::string& each : parameters)
        sqlite3_bind_text64(statement, ++position, each.data(), each.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

} // namespace

Error ErrorOf(sqlite3* database) {
    const std::string message = sqlite3_errmsg(database);
    ErrorNumber number{};
    std::string text;
    if (IsOwn(message, number, text)) return {number, text};
    const std::string reworded = Reworded(message);
    return {NumberOf(sqlite3_extended_errcode(database), message),
            reworded.empty() ? "The database engine reports: " + message + "." : reworded};
}

Statement Prepare(sqlite3* database, std::string_view sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &statement,
                           nullptr) != SQLITE_OK)
        throw ErrorOf(database);
    return Statement(statement);
}

bool Step(sqlite3* database, sqlite3_stmt* statement) {
    const int code = sqlite3_step(statement);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    const Error error = ErrorOf(database);
    sqlite3_reset(statement);
    throw Error(error);
}

void Run(sqlite3* database, std::string_view sql, const std::vector<std::string>& parameters) {
    const Statement statement = Prepare(database, sql);
    RunAgain(database, statement.get(), parameters);
}

void RunAgain(sqlite3* database, sqlite3_stmt* statement, const std::vector<std::string>& parameters) {
    struct Reset {
        void operator()(sqlite3_stmt* begun) const { sqlite3_reset(begun); }
    };
    const std::unique_ptr<sqlite3_stmt, Reset> resetting(statement); // also after a failure
    Bind(statement, parameters);
    while (Step(database, statement)) {
    }
}

std::vector<std::vector<Value>> Rows(sqlite3* database, std::string_view sql,
                                     const std::vector<std::string>& parameters) {
    const Statement statement = Prepare(database, sql);
    Bind(statement.get(), parameters);
    std::vector<std::vector<Value>> rows;
    while (Step(database, statement.get())) {
        std::vector<Value>& row = rows.emplace_back();
        for (int i = 0; i < sqlite3_column_count(statement.get()); ++i)
            row.push_back(ValueAt(statement.get(), i, ColumnType::Unknown));
    }
    return rows;
}

std::string FileUri(const std::string& path, std::string_view options) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string uri = "file:";
    for (const char c : path) {
        if (c == '%' || c == '?' || c == '#') {
            const auto byte = static_cast<unsigned char>(c);
            uri += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
        } else {
            uri += c;
        }
    }
    if (!options.empty()) uri.append("?").append(options);
    return uri;
}

std::string EngineVersion() {
    return sqlite3_libversion();
}

} // namespace jet
