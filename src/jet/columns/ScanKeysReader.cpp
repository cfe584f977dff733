#include "jet/columns/ScanKeysReader.h"

#include "jet/columns/RankedValues.h"
#include "jet/columns/SideKeys.h"
#include "jet/functions/FunctionSupport.h"

#include <algorithm>
#include <limits>
#include <sqlite3.h>
#include <unordered_map>

namespace jet {

namespace {

/// Reads the classes of a side.
class SideReader final {
  public:
    SideReader(const ColumnImage& image, const ScanSide& side, bool whole)
        : image_(image), side_(side), whole_(whole), ranked_(side.ranked.size()) {
        made_.fields.resize(side.fields.size());
        std::uint64_t combinations = 1;
        for (const std::size_t column : side.columns) {
            const std::uint64_t codes = std::max<std::uint64_t>(image.columns()[column].numbers.size(), 1);
            if (combinations > std::numeric_limits<std::uint64_t>::max() / codes) Unfit("There are too many keys.");
            combinations *= codes;
        }
        if (side.columns.size() > 1 && combinations > kManyCombinations)
            made_.met.emplace();
        else
            made_.classOf.assign(combinations, -1);
    }

    void Take(sqlite3_stmt* row) {
        std::uint64_t combination = 0;
        for (std::size_t i = 0; i < side_.columns.size(); ++i) {
            const ImageColumn& column = image_.columns()[side_.columns[i]];
            const auto code = CodeIn(column, row, static_cast<int>(i));
            if (!code) return;
            combination = combination * column.numbers.size() + *code;
        }
        const std::uint32_t keys = PlaceOf(combination);
        const std::int32_t found = ClassOf(row);
        std::int32_t& held = made_.classOf[keys];
        if (held >= 0 && (side_.single || held != found)) Unfit("Keys come twice.");
        held = found;
        const std::size_t behind = side_.columns.size() + side_.fields.size();
        for (std::size_t i = 0; i < ranked_.size(); ++i)
            ranked_[i].emplace_back(keys, ValueIn(row, behind + i));
    }

    SideClasses Finish() {
        if (made_.met) made_.classOf.push_back(-1);
        made_.ranks.assign(side_.ranked.size(), std::vector<std::int32_t>(made_.classOf.size(), -1));
        for (std::size_t i = 0; i < ranked_.size(); ++i) {
            Ranking ranking = RankValues(std::move(ranked_[i]), side_.ranked[i]);
            for (const auto& [keys, rank] : ranking.ranks)
                made_.ranks[i][keys] = rank;
            made_.ranked.push_back(std::move(ranking.ranked));
        }
        if (whole_) CheckFields();
        return std::move(made_);
    }

  private:
    /// Of more combinations only those that are met are kept.
    static constexpr std::uint64_t kManyCombinations = 1U << 20U;
    static constexpr std::uint32_t kMostMet = 8U << 20U;

    static Value ValueIn(sqlite3_stmt* row, std::size_t field) {
        return ToValue(sqlite3_column_value(row, static_cast<int>(field)));
    }

    std::uint32_t PlaceOf(std::uint64_t combination) {
        if (!made_.met) return static_cast<std::uint32_t>(combination);
        const std::uint32_t place = made_.met->PlaceOf(combination, nullptr);
        if (place >= kMostMet) Unfit("There are too many keys.");
        if (place == made_.classOf.size()) made_.classOf.push_back(-1);
        return place;
    }

    /// The number of the fields' values, a new one when they have not been met before.
    std::int32_t ClassOf(sqlite3_stmt* row) {
        if (side_.fields.empty()) {
            made_.classes = 1;
            return 0;
        }
        std::vector<Value> values;
        std::string text;
        for (std::size_t i = 0; i < side_.fields.size(); ++i) {
            values.push_back(ValueIn(row, side_.columns.size() + i));
            const std::string written = values.back().toText();
            text +=
                std::to_string(static_cast<int>(values.back().type())) + std::to_string(written.size()) + ":" + written;
        }
        const auto [place, isNew] = known_.try_emplace(text, static_cast<std::int32_t>(made_.classes));
        if (!isNew) return place->second;
        ++made_.classes;
        for (std::size_t i = 0; i < values.size(); ++i)
            made_.fields[i].push_back(std::move(values[i]));
        return place->second;
    }

    /// Values that are not the same must not compare as equal, or SQLite would put their groups together.
    void CheckFields() const {
        for (std::size_t i = 0; i < made_.fields.size(); ++i) {
            std::vector<std::pair<std::uint32_t, Value>> values;
            for (const Value& value : made_.fields[i])
                values.emplace_back(0, value);
            static_cast<void>(RankValues(std::move(values), side_.fields[i]));
        }
    }

    const ColumnImage& image_;
    const ScanSide& side_;
    const bool whole_;
    SideClasses made_;
    std::vector<std::vector<std::pair<std::uint32_t, Value>>> ranked_;
    std::unordered_map<std::string, std::int32_t> known_;
};

} // namespace

PassingCodes ReadKeys(sqlite3* database, const ImageColumn& column, const ScanKeys& keys) {
    PassingCodes codes;
    codes.passes.resize(column.numbers.size());
    std::vector<std::pair<std::uint32_t, Value>> held;
    EachRow(database, keys.sql, [&](sqlite3_stmt* row) {
        const auto code = CodeIn(column, row, 0);
        if (!code) return;
        if (codes.passes[*code] != 0 && (keys.single || keys.ranked)) Unfit("A key comes twice.");
        codes.passes[*code] = 1;
        if (keys.ranked) held.emplace_back(*code, ToValue(sqlite3_column_value(row, 1)));
    });
    if (!keys.ranked) return codes;
    Ranking ranking = RankValues(std::move(held), *keys.ranked);
    codes.ranks.assign(codes.passes.size(), -1);
    for (const auto& [code, rank] : ranking.ranks)
        codes.ranks[code] = rank;
    codes.ranked = std::move(ranking.ranked);
    return codes;
}

SideClasses ReadSide(sqlite3* database, const ColumnImage& image, const ScanSide& side, bool whole) {
    SideReader reader(image, side, whole);
    EachRow(database, side.sql, [&](sqlite3_stmt* row) { reader.Take(row); });
    return reader.Finish();
}

std::uint64_t RowsOf(const ImageColumn& column, const std::vector<std::uint8_t>& passes) {
    std::uint64_t rows = 0;
    for (std::size_t code = 0; code < column.counts.size(); ++code)
        if (passes[code] != 0) rows += column.counts[code];
    return rows;
}

std::uint64_t RowsOf(const ColumnImage& image, const ScanSide& side, const SideClasses& classes) {
    std::uint64_t least = image.rows();
    const auto codes = CodesThatPass(image, side, classes);
    for (std::size_t i = 0; i < codes.size(); ++i)
        least = std::min(least, RowsOf(image.columns()[side.columns[i]], codes[i]));
    return least;
}

} // namespace jet
