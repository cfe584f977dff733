#include "jet/engine/TableSizes.h"

#include "jet/engine/Sqlite.h"
#include "jet/values/Quoting.h"

#include <algorithm>

namespace jet {

namespace {

constexpr std::int64_t kMostPages = 5000;
constexpr std::int64_t kFar = 4; // statistics may be so many times too small or too large

bool FitsFigure(std::int64_t rows, std::int64_t known) {
    return known > 0 && rows / kFar <= known && known / kFar <= rows;
}

} // namespace

bool TableSizes::inDoubt(const std::set<std::string>& tables) const {
    return std::ranges::any_of(tables, [&](const std::string& table) { return !rows_.contains(table); });
}

void TableSizes::Forget(const std::string& table) {
    rows_.erase(table);
    analysed_.erase(table);
}

void TableSizes::ForgetAll() {
    rows_.clear();
    analysed_.clear();
}

bool TableSizes::Refresh(const std::set<std::string>& tables) {
    bool measured = false;
    for (const std::string& each : tables) {
        if (rows_.contains(each)) continue;
        const std::size_t dot = each.find('.');
        Size size;
        try {
            measured = Measure(each.substr(0, dot), each.substr(dot + 1), size.rows) || measured;
        } catch (const Error&) {
            // the file is busy or can't be written: the statement runs without statistics
            size.rows = INT64_MAX;
        }
        rows_[each] = size;
    }
    return measured;
}

void TableSizes::Made(const std::string& table, std::int64_t rows) {
    constexpr std::int64_t kFew = 100'000; // more may make the file a large one
    if (rows > kFew) {
        static_cast<void>(Refresh({table}));
        return;
    }
    try {
        const std::size_t dot = table.find('.');
        if (rows > 0) {
            Run(database_, "ANALYZE " + table.substr(0, dot) + "." + QuotedName(table.substr(dot + 1)));
            analysed_[table] = rows;
        }
    } catch (const Error&) {
        rows = INT64_MAX; // as above
    }
    rows_[table] = {rows, 0};
}

bool TableSizes::Refilled(const std::string& table, std::int64_t rows) {
    const auto known = analysed_.find(table);
    if (known == analysed_.end() || !FitsFigure(rows, known->second)) return false;
    rows_[table] = {rows, 0};
    return true;
}

bool TableSizes::Measure(const std::string& schema, const std::string& table, std::int64_t& rows) {
    rows = INT64_MAX;
    if (table.starts_with("sqlite_") || sqlite3_db_readonly(database_, schema.c_str()) != 0) return false;
    if (Rows(database_, "PRAGMA " + schema + ".page_count")[0][0].toInteger() > kMostPages) return false;
    const std::string name = schema + "." + QuotedName(table);
    rows = Rows(database_, "SELECT count(*) FROM " + name)[0][0].toInteger();
    if (rows == 0) return false;
    const auto figures =
        Rows(database_, "SELECT 1 FROM " + schema + ".sqlite_master WHERE type = 'table' AND name = 'sqlite_stat1'");
    std::int64_t known = 0;
    if (!figures.empty())
        known = Rows(database_,
                     "SELECT max(CAST(stat AS INTEGER)) FROM " + schema + ".sqlite_stat1 WHERE tbl = ? COLLATE NOCASE",
                     {table})[0][0]
                    .toInteger();
    if (FitsFigure(rows, known)) return false;
    Run(database_, "ANALYZE " + name);
    return true;
}

void TableSizes::Changed(const std::set<std::string>& tables, std::int64_t rows) {
    for (const std::string& each : tables) {
        const auto found = rows_.find(each);
        if (found == rows_.end()) continue;
        found->second.changed += rows;
        if (found->second.changed >= found->second.rows) rows_.erase(found);
    }
}

} // namespace jet
