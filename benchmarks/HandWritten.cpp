#include "HandWritten.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <vector>

namespace tessaro::bench {

namespace {

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

[[noreturn]] void Fail(sqlite3* database, const std::string& what) {
    std::fprintf(stderr, "bench: %s: %s\n", what.c_str(), sqlite3_errmsg(database));
    std::exit(2);
}

Database Open(const std::string& file) {
    sqlite3* database = nullptr;
    if (sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) Fail(database, file);
    return Database(database);
}

void RunOn(sqlite3* database, const std::string& sql) {
    if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail(database, sql);
}

/// What a query gave, each column kept in the form in which it stands in the file, as one would who knows the tables.
struct Result {
    std::vector<std::int64_t> numbers;
    std::vector<std::string> texts;

    void Keep(sqlite3_stmt* statement, int column) {
        if (sqlite3_column_type(statement, column) == SQLITE_INTEGER) {
            numbers.push_back(sqlite3_column_int64(statement, column));
        } else if (const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column))) {
            texts.emplace_back(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
        }
    }
};

std::int64_t WalkOn(sqlite3* database, const std::string& sql, std::int64_t most,
                    std::vector<std::string>* firstColumn = nullptr) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) Fail(database, sql);
    const int columns = sqlite3_column_count(statement);
    std::int64_t rows = 0;
    Result result;
    while (rows < most && sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column)
            result.Keep(statement, column);
        if (firstColumn != nullptr)
            firstColumn->emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        ++rows;
    }
    sqlite3_finalize(statement);
    return rows;
}

template <class Take> void EachRow(sqlite3* database, const std::string& sql, const Take& take) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) Fail(database, sql);
    while (sqlite3_step(statement) == SQLITE_ROW)
        take(statement);
    sqlite3_finalize(statement);
}

std::vector<std::string> ReadCatalogue(sqlite3* database) {
    std::vector<std::string> tables;
    WalkOn(database, "SELECT name FROM sqlite_master WHERE type = 'table'", INT64_MAX, &tables);
    for (const std::string& table : tables)
        WalkOn(database, "PRAGMA table_info(\"" + table + "\")", INT64_MAX);
    return tables;
}

} // namespace

HandWritten::HandWritten(const std::string& dataFile, const std::string& selections, const std::string& working)
    : database_(Open(dataFile).release()) {
    Run("ATTACH '" + selections + "' AS sel; ATTACH '" + working + "' AS work");
    // As safe as ours: the selections outlive a crash, the working database is made anew.
    Run("PRAGMA main.synchronous = NORMAL; PRAGMA sel.synchronous = NORMAL; PRAGMA work.synchronous = OFF; "
        "PRAGMA work.journal_mode = MEMORY");
}

HandWritten::~HandWritten() {
    sqlite3_close(database_);
}

std::vector<std::int64_t> HandWritten::Numbers(const std::string& sql, int column) {
    std::vector<std::int64_t> numbers;
    EachRow(database_, sql, [&](sqlite3_stmt* row) { numbers.push_back(sqlite3_column_int64(row, column)); });
    return numbers;
}

std::vector<double> HandWritten::Doubles(const std::string& sql) {
    std::vector<double> numbers;
    EachRow(database_, sql, [&](sqlite3_stmt* row) { numbers.push_back(sqlite3_column_double(row, 0)); });
    return numbers;
}

void HandWritten::Run(const std::string& sql) {
    RunOn(database_, sql);
}

std::int64_t HandWritten::Walk(const std::string& sql, std::int64_t most) {
    return WalkOn(database_, sql, most);
}

void OpenByHand(const std::string& dataFile, const std::string& selections, const std::string& workingTemplate,
                const std::string& working) {
    std::filesystem::copy_file(workingTemplate, working, std::filesystem::copy_options::overwrite_existing);
    const Database data = Open(dataFile);
    const std::vector<std::string> tables = ReadCatalogue(data.get());
    WalkOn(data.get(), "SELECT LanguageCode FROM Language WHERE LanguageDefault <> 0", 1);
    const Database chosen = Open(selections);
    ReadCatalogue(chosen.get());
    const Database work = Open(working);
    ReadCatalogue(work.get());
    RunOn(work.get(), "PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY; BEGIN; CREATE TABLE links (name TEXT, "
                      "file TEXT, source TEXT)");
    for (const std::string& table : tables)
        RunOn(work.get(), "INSERT INTO links VALUES ('" + table + "', '" + dataFile + "', '" + table + "')");
    RunOn(work.get(), "COMMIT");
}

} // namespace tessaro::bench
