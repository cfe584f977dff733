#pragma once

#include <memory>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessaro::test {

/// Reads a database file with the plain engine, without the dialect and without what the program thinks of the file.
class PlainReader {
  public:
    explicit PlainReader(const std::string& path) {
        sqlite3* raw = nullptr;
        const int result = sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
        database_.reset(raw);
        if (result != SQLITE_OK) throw std::runtime_error("can't open " + path);
    }

    /// All rows, fields joined with "|", Null as an empty text.
    [[nodiscard]] std::vector<std::string> Rows(const std::string& sql) const {
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(database_.get(), sql.c_str(), -1, &raw, nullptr) != SQLITE_OK)
            throw std::runtime_error(sql + ": " + sqlite3_errmsg(database_.get()));
        const std::unique_ptr<sqlite3_stmt, Finalize> statement(raw);
        std::vector<std::string> rows;
        while (sqlite3_step(raw) == SQLITE_ROW) {
            std::string row;
            for (int i = 0; i < sqlite3_column_count(raw); ++i) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(raw, i));
                row += (i > 0 ? "|" : "") + std::string(text ? text : "");
            }
            rows.push_back(std::move(row));
        }
        return rows;
    }

    /// The first field of the first row as a number; -1 without rows.
    [[nodiscard]] long long Number(const std::string& sql) const {
        const std::vector<std::string> rows = Rows(sql);
        return rows.empty() || rows.front().empty() ? -1 : std::stoll(rows.front());
    }

  private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3, Close> database_;
};

} // namespace tessaro::test
