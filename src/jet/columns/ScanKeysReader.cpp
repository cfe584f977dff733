#include "jet/columns/ScanKeysReader.h"

#include "jet/functions/FunctionSupport.h"
#include "jet/values/Collation.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <numeric>
#include <sqlite3.h>

namespace jet {

namespace {

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

[[noreturn]] void Unfit(const char* why) {
    throw Error(ErrorNumber::ColumnsUnfit, why);
}

/// Walks the rows of a query; what fails in it will fail the plain way, too.
template <class Take> void EachRow(sqlite3* database, const std::string& sql, const Take& take) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &raw, nullptr) != SQLITE_OK)
        Unfit("The keys can't be read.");
    const std::unique_ptr<sqlite3_stmt, FinalizeStatement> statement(raw);
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(raw)) == SQLITE_ROW)
        take(raw);
    if (code != SQLITE_DONE) Unfit("The keys can't be read.");
}

/// The code of a number; nothing when the column doesn't have it.
std::optional<std::uint32_t> CodeOf(const ImageColumn& column, std::int64_t number) {
    const std::size_t nulls = column.hasNull ? 1 : 0;
    const auto sorted = column.numbers.subspan(nulls);
    const auto found = std::ranges::lower_bound(sorted, number);
    if (found == sorted.end() || *found != number) return std::nullopt;
    return static_cast<std::uint32_t>(static_cast<std::size_t>(found - sorted.begin()) + nulls);
}

bool IsNumber(const Value& value) {
    return value.type() == Value::Type::Integer || value.type() == Value::Type::Double;
}

int CompareNumbers(const Value& a, const Value& b) {
    if (a.type() == Value::Type::Integer && b.type() == Value::Type::Integer)
        return static_cast<int>(a.toInteger() > b.toInteger()) - static_cast<int>(a.toInteger() < b.toInteger());
    return static_cast<int>(a.toDouble() > b.toDouble()) - static_cast<int>(a.toDouble() < b.toDouble());
}

int Compared(const Value& a, const Value& b, CompareKind kind) {
    if (kind == CompareKind::Number) return CompareNumbers(a, b);
    const std::string left = a.toText();
    const std::string right = b.toText();
    if (kind == CompareKind::Identifier)
        return sqlite3_strnicmp(left.c_str(), right.c_str(), static_cast<int>(std::max(left.size(), right.size())));
    return kind == CompareKind::ValueText ? CompareValueText(left, right) : CompareText(left, right);
}

void Rank(std::vector<std::pair<std::uint32_t, Value>> held, CompareKind kind, PassingCodes& codes) {
    codes.ranks.assign(codes.passes.size(), -1);
    std::erase_if(held, [](const auto& each) { return each.second.isNull(); });
    for (const auto& each : held)
        if (IsNumber(each.second) != (kind == CompareKind::Number)) Unfit("What is ranked is of another type.");
    std::ranges::stable_sort(held,
                             [&](const auto& a, const auto& b) { return Compared(a.second, b.second, kind) < 0; });
    for (const auto& [code, value] : held) {
        if (codes.ranked.empty() || codes.ranked.back() != value) {
            if (!codes.ranked.empty() && Compared(codes.ranked.back(), value, kind) == 0)
                Unfit("Two texts differ in case alone.");
            codes.ranked.push_back(value);
        }
        codes.ranks[code] = static_cast<std::int32_t>(codes.ranked.size()) - 1;
    }
}

} // namespace

PassingCodes ReadKeys(sqlite3* database, const ImageColumn& column, const ScanKeys& keys) {
    PassingCodes codes;
    codes.passes.resize(column.numbers.size());
    std::vector<std::pair<std::uint32_t, Value>> held;
    EachRow(database, keys.sql, [&](sqlite3_stmt* row) {
        const int type = sqlite3_column_type(row, 0);
        if (type == SQLITE_NULL) return;
        if (type != SQLITE_INTEGER) Unfit("A key is no whole number.");
        const auto code = CodeOf(column, sqlite3_column_int64(row, 0));
        if (!code) return;
        if (codes.passes[*code] != 0 && (keys.single || keys.ranked)) Unfit("A key comes twice.");
        codes.passes[*code] = 1;
        if (keys.ranked) held.emplace_back(*code, ToValue(sqlite3_column_value(row, 1)));
    });
    if (keys.ranked) Rank(std::move(held), *keys.ranked, codes);
    return codes;
}

std::uint64_t RowsOf(const ImageColumn& column, const PassingCodes& codes) {
    std::uint64_t rows = 0;
    for (std::size_t code = 0; code < column.counts.size(); ++code)
        if (codes.passes[code] != 0) rows += column.counts[code];
    return rows;
}

} // namespace jet
