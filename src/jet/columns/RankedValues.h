#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/values/Catalogue.h"
#include "jet/values/Value.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// What the readers of the keys of a scan share.
namespace jet {

/// Throws Error (ColumnsUnfit): the statement runs the plain way.
[[noreturn]] void Unfit(const char* why);

/// Walks the rows of a query. Throws ColumnsUnfit when it fails: what fails in it will fail the plain way, too.
void EachRow(sqlite3* database, const std::string& sql, const std::function<void(sqlite3_stmt*)>& take);

/// The code of a whole number in a field of the row; nothing for Null and for a number that the column doesn't have.
/// Throws ColumnsUnfit for anything else.
[[nodiscard]] std::optional<std::uint32_t> CodeIn(const ImageColumn& column, sqlite3_stmt* row, int field);

/// Numbers in the order of the values that are not Null, each with a place of the caller's.
struct Ranking {
    std::vector<std::pair<std::uint32_t, std::int32_t>> ranks; ///< place and rank
    std::vector<Value> ranked;                                 ///< what each rank stands for
};
/// Throws ColumnsUnfit for values of another type than the kind compares, and for two that compare as equal without
/// being the same.
[[nodiscard]] Ranking RankValues(std::vector<std::pair<std::uint32_t, Value>> held, CompareKind kind);

/// The rank of each value by how it compares: 0 is Null, and values that compare as equal have the same rank. Throws
/// ColumnsUnfit for values of another type than the kind compares.
[[nodiscard]] std::vector<std::uint32_t> OrderOf(const std::vector<Value>& values, CompareKind kind);

} // namespace jet
