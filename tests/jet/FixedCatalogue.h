#pragma once

#include "jet/emit/Translator.h"
#include "jet/functions/Functions.h"
#include "jet/sql/Parser.h"
#include "jet/values/Catalogue.h"

#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace jet::test {

/// A catalogue made from CREATE TABLE statements, beside an SQLite database in memory that has the same tables. It has
/// the dialect's collations, and the functions of the dialect by name only.
class FixedCatalogue : public Catalogue {
  public:
    FixedCatalogue() {
        sqlite3_open(":memory:", &database_);
        RegisterFunctions(database_);
    }
    ~FixedCatalogue() override { sqlite3_close(database_); }
    FixedCatalogue(const FixedCatalogue&) = delete;
    FixedCatalogue& operator=(const FixedCatalogue&) = delete;

    [[nodiscard]] const TableInfo* find(std::string_view name) const override {
        for (const auto& table : tables_)
            if (SameName(table->name, name)) return table.get();
        return nullptr;
    }
    [[nodiscard]] unsigned version() const override { return 1; }

    void define(const std::string& sql) {
        const auto create = std::get<tree::CreateTable>(Parse(sql));
        run(Translate(sql, *this).statements.front());
        auto table = std::make_unique<TableInfo>();
        table->name = create.table;
        for (const auto& column : create.columns)
            table->columns.push_back({column.name, column.type, !column.notNull});
        tables_.push_back(std::move(table));
    }
    void forget(std::string_view name) {
        std::erase_if(tables_, [&](const auto& table) { return SameName(table->name, name); });
    }

    /// Runs SQLite text; fails the test on an error. Gives the rows, fields joined by "|".
    std::vector<std::string> run(const std::string& sql) {
        std::vector<std::string> rows;
        sqlite3_stmt* statement = prepare(sql);
        if (statement == nullptr) return rows;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            std::string row;
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                const auto* const text = sqlite3_column_text(statement, i);
                row += (i == 0 ? "" : "|") + std::string(text ? reinterpret_cast<const char*>(text) : "");
            }
            rows.push_back(row);
        }
        if (sqlite3_finalize(statement) != SQLITE_OK) ADD_FAILURE() << sqlite3_errmsg(database_) << "\n" << sql;
        return rows;
    }
    /// Whether SQLite takes the text, its functions apart from their effects.
    [[nodiscard]] std::string complaint(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        std::string text = sql;
        const bool failed = sqlite3_prepare_v2(database_, text.c_str(), -1, &statement, nullptr) != SQLITE_OK;
        sqlite3_finalize(statement);
        return failed ? sqlite3_errmsg(database_) : "";
    }
    [[nodiscard]] sqlite3* database() const { return database_; }

  private:
    sqlite3_stmt* prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            ADD_FAILURE() << sqlite3_errmsg(database_) << "\n" << sql;
        return statement;
    }

    sqlite3* database_ = nullptr;
    std::vector<std::unique_ptr<TableInfo>> tables_;
};

/// The lines of a file of the tests' data folder, without empty ones and comments (#).
[[nodiscard]] std::vector<std::string> CorpusLines(const std::string& file);

} // namespace jet::test
