#include "jet/RandomStatements.h"

#include "jet/values/Error.h"

#include <array>
#include <map>
#include <sqlite3.h>

namespace jet {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array kTables = {"T", "U", "Data", "M"};
constexpr std::array kFields = {"Id", "Name", "Datavalue", "N", "D", "Y", "G", "K"};
constexpr std::array kLiterals = {"0",      "-1",           "2147483648", "9223372036854775807",
                                  "1E308",  "0.1",          "''",         "'nan'",
                                  "'-inf'", "'0x1F'",       "'1,5'",      "'12'",
                                  "'Île'",  "'a''b'",       "'%_*?[#'",   "Null",
                                  "True",   "#2000-02-29#", "'\xff'",     "\"q\"",
                                  "''''",   "' 7 '",        "'123456789'"};
constexpr std::array kOperators = {" + ",   " - ",  " * ",   " / ",   " \\ ", " MOD ", " ^ ", " & ",  " XOR ",
                                   " AND ", " OR ", " EQV ", " IMP ", " = ",  " <> ",  " < ", " >= ", " LIKE "};
constexpr std::array kOneArgument = {
    "Abs",  "Len", "CStr", "CDbl", "CLng",  "Val",  "UCase", "Trim", "Int",   "Sqr",   "Log",    "IsNull",     "CDate",
    "Year", "Chr", "Asc",  "Str",  "Round", "CInt", "Date",  "Sgn",  "CBool", "Space", "IsDate", "StrReverse", "Hex"};
constexpr std::array kTwoArguments = {"Left", "Right", "InStr", "Format", "String", "Nz", "Choose", "StrComp", "Round"};
constexpr std::array kAggregates = {"Count", "Sum", "Avg", "Min", "Max", "StDev", "First", "Last"};

/// Every table with its fields and rows.
std::string Contents(Connection& connection) {
    std::map<std::string, std::string> tables; // by name: which comes first is nobody's business
    for (const TableInfo& table : connection.Tables()) {
        Recordset rows = connection.OpenRecordset("SELECT * FROM [" + table.name + "]");
        std::string& all = tables[table.name];
        for (std::size_t i = 0; i < rows.FieldCount(); ++i)
            all += rows.Field(i).name + "|";
        if (!rows.atEnd()) all += rows.GetString(-1, "|", ";", "-");
    }
    std::string all;
    for (const auto& [name, contents] : tables)
        all += "[" + name + "]" + contents;
    return all;
}

bool IsQuery(const std::string& sql) {
    return sql.starts_with("SELECT") && sql.find(" INTO ") == std::string::npos;
}

/// False when the statement failed.
bool Runs(Connection& connection, const std::string& sql) {
    try {
        if (IsQuery(sql) || sql.starts_with("TRANSFORM"))
            static_cast<void>(connection.OpenRecordset(sql));
        else
            connection.Execute(sql);
        return true;
    } catch (const Error&) {
        return false;
    }
}

std::string IntegrityOf(const std::string& path) {
    sqlite3* plain = nullptr;
    std::string verdict;
    const auto take = [](void* target, int, char** texts, char**) {
        *static_cast<std::string*>(target) += texts[0];
        return 0;
    };
    if (sqlite3_open_v2(path.c_str(), &plain, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK)
        sqlite3_exec(plain, "PRAGMA quick_check", take, &verdict, nullptr);
    sqlite3_close(plain);
    return verdict;
}

} // namespace

void RandomStatements::MakeTables(Connection& connection) {
    for (const char* sql :
         {"CREATE TABLE T (Id COUNTER PRIMARY KEY, Name TEXT(8), Datavalue TEXT(20), N LONG, D DOUBLE, Y YESNO)",
          "CREATE TABLE U (Id LONG PRIMARY KEY, K TEXT(10) NOT NULL, G GUID)",
          "CREATE TABLE Data (Id LONG, Datavalue TEXT(20), K MEMO, N SHORT, D DATETIME)",
          "CREATE INDEX ix ON Data (Datavalue)",
          "INSERT INTO T (Name, Datavalue, N, D, Y) VALUES ('a', '10', 1, 1.5, True), ('B', 'n/a', 2, Null, False), "
          "('é', '9.5', Null, -1E10, True)",
          "INSERT INTO U (Id, K) VALUES (1, 'a'), (2, 'É')",
          "INSERT INTO Data (Id, Datavalue, K, N) VALUES (1, 'nan', 'x', 3), (2, '1e3', Null, -4)"})
        connection.Execute(sql);
}

std::string RandomStatements::Literal() {
    return OneOf(kLiterals);
}

std::string RandomStatements::Table() {
    return table_ = kTables[Below(10) == 0 ? 3 : Below(3)];
}

std::string RandomStatements::FieldOf(const std::string& table) {
    if (Below(20) == 0) return OneOf(kFields);
    if (table == "U") return OneOf(std::array{"Id", "K", "G"});
    if (table == "Data") return OneOf(std::array{"Id", "Datavalue", "K", "N", "D"});
    if (table == "M") return OneOf(std::array{"Id", "Name"});
    return OneOf(std::array{"Id", "Name", "Datavalue", "N", "D", "Y"});
}

std::string RandomStatements::Field() {
    return FieldOf(table_);
}

std::string RandomStatements::Called(int depth) {
    switch (Below(6)) {
    case 0:
        return "IIf(" + Condition(depth) + ", " + Expression(depth) + ", " + Expression(depth) + ")";
    case 1:
        return std::string(OneOf(kTwoArguments)) + "(" + Expression(depth) + ", " + Expression(depth) + ")";
    case 2:
        return "Replace(" + Expression(depth) + ", " + Expression(depth) + ", " + Literal() + ")";
    case 3:
        return std::string(OneOf(kAggregates)) + "(" + Expression(depth) + ")";
    default:
        return std::string(OneOf(kOneArgument)) + "(" + Expression(depth) + ")";
    }
}

std::string RandomStatements::Expression(int depth) {
    if (depth <= 0) return Below(2) == 0 ? Literal() : Field();
    switch (Below(8)) {
    case 0:
        return "(" + Query(depth - 2) + ")";
    case 1:
    case 2:
        return Called(depth - 1);
    case 3:
    case 4:
    case 5:
        return "(" + Expression(depth - 1) + OneOf(kOperators) + Expression(depth - 1) + ")";
    default:
        return Expression(0);
    }
}

std::string RandomStatements::Condition(int depth) {
    switch (Below(6)) {
    case 0:
        return Expression(depth - 1) + " BETWEEN " + Expression(depth - 1) + " AND " + Expression(depth - 1);
    case 1:
        return Field() + " IN (" + Literal() + ", " + Expression(depth - 1) + ")";
    case 2:
        return Field() + " IN (" + Query(depth - 2) + ")";
    case 3:
        return "NOT " + Expression(depth - 1) + " IS NULL";
    default:
        return Expression(depth - 1) + OneOf(kOperators) + Expression(depth - 1);
    }
}

std::string RandomStatements::Query(int depth) {
    static constexpr std::array kHeads = {"SELECT ", "SELECT DISTINCT ", "SELECT TOP 2 ", "SELECT DISTINCTROW "};
    const std::string around = table_;
    const std::string table = Table();
    std::string sql = OneOf(kHeads) + Expression(depth) + " AS x";
    table_ = table;
    if (Below(3) == 0) sql += ", " + Field();
    sql += " FROM " + table;
    if (Below(5) == 0)
        sql += (Below(2) == 0 ? " LEFT JOIN U" : " INNER JOIN U") + std::string(" AS B ON B.Id = ") + Field();
    if (Below(2) == 0) sql += " WHERE " + Condition(depth);
    table_ = table;
    if (Below(8) == 0) sql += " GROUP BY " + Field();
    if (Below(4) == 0) sql += " ORDER BY " + Field();
    table_ = around;
    return sql;
}

std::string RandomStatements::Change() {
    const std::string table = Table();
    const std::string field = Field();
    switch (Below(5)) {
    case 0:
        return "INSERT INTO " + table + " (Id, " + field + ") VALUES (" + std::to_string(Below(50)) + ", " + Literal() +
               ")";
    case 1:
        return "INSERT INTO " + table + " (" + field + ") " + Query(2);
    case 2:
        return "DELETE * FROM " + table + " WHERE " + Condition(2);
    case 3:
        return "UPDATE " + table + " AS A, U AS B SET A." + field + " = B.K, B.K = " + Literal() + " WHERE A.Id = B.Id";
    default:
        return "UPDATE " + table + " SET " + field + " = " + Expression(2) + " WHERE " + Condition(2);
    }
}

std::string RandomStatements::SchemaChange() {
    const std::string table = Table();
    switch (Below(6)) {
    case 0:
        return "CREATE TABLE M (Id LONG PRIMARY KEY, Name TEXT(3) DEFAULT " + Literal() + ")";
    case 1:
        return "DROP TABLE " + std::string(Below(8) == 0 ? "MSysTessaro" : "M");
    case 2:
        return "ALTER TABLE " + table + " ADD COLUMN " + OneOf(kFields) + " TEXT(4)";
    case 3:
        return "CREATE UNIQUE INDEX i" + std::to_string(Below(9)) + " ON " + table + " (" + Field() + ")";
    case 4:
        return "TRANSFORM Max(" + Expression(1) + ") SELECT Id FROM " + table + " GROUP BY Id PIVOT " + Field();
    default:
        return "SELECT " + Expression(2) + " AS Name, Id INTO M FROM " + table + " WHERE " + Condition(2);
    }
}

std::string RandomStatements::Damaged(std::string sql) {
    const std::size_t at = Below(sql.size());
    switch (Below(3)) {
    case 0:
        return sql.erase(at, 1 + Below(5));
    case 1:
        sql[at] = static_cast<char>(Below(256));
        return sql;
    default:
        return sql.insert(at, sql.substr(Below(sql.size()), Below(20)));
    }
}

std::string RandomStatements::Next() {
    const std::size_t kind = Below(10);
    std::string sql = kind < 4 ? Query(3) : kind < 8 ? Change() : SchemaChange();
    return Below(10) == 0 ? Damaged(std::move(sql)) : sql;
}

RandomRun RunRandomStatements(const std::string& path, std::uint64_t seed, std::chrono::milliseconds duration) {
    constexpr std::size_t kMost = 20'000; // bytes of contents; then the tables are emptied
    Database::Create(path, "secret");
    const auto connection = Connection::Open(path, "secret");
    RandomStatements::MakeTables(*connection);
    RandomStatements statements(seed);
    RandomRun run;
    std::string before = Contents(*connection);
    for (const auto end = Clock::now() + duration; Clock::now() < end && run.fault.empty(); ++run.statements) {
        const std::string sql = statements.Next();
        const bool good = Runs(*connection, sql);
        std::string after = good && IsQuery(sql) ? before : Contents(*connection);
        if (!good && after != before) run.fault = sql + "\nbefore: " + before + "\nafter: " + after;
        run.failed += good ? 0 : 1;
        if (after.size() > kMost) {
            for (const TableInfo& table : connection->Tables())
                connection->Execute("DELETE * FROM [" + table.name + "] WHERE Id > 3 OR Id IS NULL");
            after = Contents(*connection);
        }
        before = std::move(after);
    }
    if (run.fault.empty() && IntegrityOf(path) != "ok") run.fault = "the file is damaged: " + IntegrityOf(path);
    return run;
}

} // namespace jet
