#include "jet/columns/RankedValues.h"

#include "jet/columns/WorkWatch.h"
#include "jet/values/Collation.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <memory>
#include <sqlite3.h>

namespace jet {

namespace {

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

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

/// Without Nulls.
void Sort(std::vector<std::pair<std::uint32_t, Value>>& held, CompareKind kind) {
    std::erase_if(held, [](const auto& each) { return each.second.isNull(); });
    for (const auto& each : held)
        if (IsNumber(each.second) != (kind == CompareKind::Number)) Unfit("What is ranked is of another type.");
    std::ranges::stable_sort(held,
                             [&](const auto& a, const auto& b) { return Compared(a.second, b.second, kind) < 0; });
}

} // namespace

void Unfit(const char* why) {
    throw Error(ErrorNumber::ColumnsUnfit, why);
}

void EachRow(sqlite3* database, const std::string& sql, const std::function<void(sqlite3_stmt*)>& take) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &raw, nullptr) != SQLITE_OK)
        Unfit("The keys can't be read.");
    const std::unique_ptr<sqlite3_stmt, FinalizeStatement> statement(raw);
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(raw)) == SQLITE_ROW)
        take(raw);
    if (code == SQLITE_INTERRUPT) FailInterrupted();
    if (code != SQLITE_DONE) Unfit("The keys can't be read.");
}

std::optional<std::uint32_t> CodeIn(const ImageColumn& column, sqlite3_stmt* row, int field) {
    const int type = sqlite3_column_type(row, field);
    if (type == SQLITE_NULL) return std::nullopt;
    if (type != SQLITE_INTEGER) Unfit("A key is no whole number.");
    const std::int64_t number = sqlite3_column_int64(row, field);
    const std::size_t nulls = column.hasNull ? 1 : 0;
    const auto sorted = column.numbers.subspan(nulls);
    const auto found = std::ranges::lower_bound(sorted, number);
    if (found == sorted.end() || *found != number) return std::nullopt;
    return static_cast<std::uint32_t>(static_cast<std::size_t>(found - sorted.begin()) + nulls);
}

Ranking RankValues(std::vector<std::pair<std::uint32_t, Value>> held, CompareKind kind) {
    Ranking made;
    Sort(held, kind);
    for (const auto& [place, value] : held) {
        if (made.ranked.empty() || made.ranked.back() != value) {
            if (!made.ranked.empty() && Compared(made.ranked.back(), value, kind) == 0)
                Unfit("Two texts differ in case alone.");
            made.ranked.push_back(value);
        }
        made.ranks.emplace_back(place, static_cast<std::int32_t>(made.ranked.size()) - 1);
    }
    return made;
}

std::vector<std::uint32_t> OrderOf(const std::vector<Value>& values, CompareKind kind) {
    std::vector<std::pair<std::uint32_t, Value>> held;
    for (std::size_t i = 0; i < values.size(); ++i)
        held.emplace_back(static_cast<std::uint32_t>(i), values[i]);
    Sort(held, kind);
    std::vector<std::uint32_t> ranks(values.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < held.size(); ++i) {
        if (i == 0 || Compared(held[i - 1].second, held[i].second, kind) != 0) ++rank;
        ranks[held[i].first] = rank;
    }
    return ranks;
}

} // namespace jet
