#include "jet/engine/BulkLoad.h"

#include "jet/values/Error.h"

#include <sqlite3.h>

namespace jet {

namespace {

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

[[noreturn]] void Fail(sqlite3* database) {
    throw Error(ErrorNumber::EngineError, std::string("The rows can't be written: ") + sqlite3_errmsg(database));
}

DatabaseHandle OpenFile(const std::string& path) {
    sqlite3* raw = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READWRITE, nullptr);
    DatabaseHandle database(raw);
    if (result != SQLITE_OK) throw Error(ErrorNumber::NotADatabase, "The file can't be opened for loading: " + path);
    return database;
}

void Run(sqlite3* database, const char* sql) {
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Fail(database);
}

std::string QuotedName(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name)
        quoted.append(c == '"' ? 2U : 1U, c);
    return quoted + "\"";
}

int Bind(sqlite3_stmt* statement, int position, const Value& value) {
    switch (value.type()) {
    case Value::Type::Null:
        return sqlite3_bind_null(statement, position);
    case Value::Type::Integer:
        return sqlite3_bind_int64(statement, position, value.toInteger());
    case Value::Type::Double:
        return sqlite3_bind_double(statement, position, value.toDouble());
    case Value::Type::Text:
        break;
    }
    const std::string text = value.toText();
    return sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

} // namespace

struct BulkLoad::Impl {
    DatabaseHandle database;
    StatementHandle insert;
    std::size_t columnCount = 0;
    bool finished = false;
};

BulkLoad::BulkLoad(const std::string& path) : impl_(std::make_unique<Impl>()) {
    impl_->database = OpenFile(path);
    // A file whose load was interrupted is made anew, so there is no need to wait for the disk.
    Run(impl_->database.get(), "PRAGMA synchronous=OFF; PRAGMA cache_size=-65536; BEGIN IMMEDIATE");
}

BulkLoad::~BulkLoad() {
    impl_->insert.reset();
    if (!impl_->finished) sqlite3_exec(impl_->database.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void BulkLoad::Into(std::string_view table, const std::vector<std::string>& columns, SameKey same) {
    std::string sql =
        (same == SameKey::Replaces ? "INSERT OR REPLACE INTO " : "INSERT INTO ") + QuotedName(table) + " (";
    std::string places;
    for (const std::string& column : columns) {
        sql += (places.empty() ? "" : ",") + QuotedName(column);
        places += places.empty() ? "?" : ",?";
    }
    sql += ") VALUES (" + places + ")";
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(impl_->database.get(), sql.c_str(), -1, &raw, nullptr) != SQLITE_OK)
        Fail(impl_->database.get());
    impl_->insert.reset(raw);
    impl_->columnCount = columns.size();
}

void BulkLoad::Add(std::span<const Value> row) {
    if (!impl_->insert || row.size() != impl_->columnCount)
        throw Error(ErrorNumber::EngineError, "A row to be loaded doesn't fit the columns that were announced");
    sqlite3_stmt* insert = impl_->insert.get();
    int position = 0;
    for (const Value& value : row) {
        if (Bind(insert, ++position, value) != SQLITE_OK) Fail(impl_->database.get());
    }
    const int result = sqlite3_step(insert);
    sqlite3_reset(insert);
    if (result != SQLITE_DONE) Fail(impl_->database.get());
}

void BulkLoad::Finish() {
    impl_->insert.reset();
    Run(impl_->database.get(), "COMMIT");
    impl_->finished = true;
}

void Analyze(const std::string& path) {
    const DatabaseHandle database = OpenFile(path);
    // The whole table is read: statistics from a sample mislead the planner when a table has millions of rows.
    Run(database.get(), "PRAGMA synchronous=OFF; PRAGMA cache_size=-65536; PRAGMA analysis_limit=0; ANALYZE");
}

} // namespace jet
