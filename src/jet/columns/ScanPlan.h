#pragma once

#include "jet/values/Catalogue.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What a statement wants computed from a column image.
namespace jet {

class ColumnImage;
class NumberList;

/// The rows pass whose number in a column occurs among the keys, which a query of a small table gives.
struct ScanKeys {
    std::size_t column = 0;            ///< of the image
    std::string sql;                   ///< gives the keys, and the text or number to rank by when there is one
    bool single = false;               ///< the outcome would be another if a key came twice
    std::optional<CompareKind> ranked; ///< how the second column compares

    bool operator==(const ScanKeys&) const = default;
};

enum class ScanOperator { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

/// Rows whose value compares so with a number: a text that is no number is greater than all numbers, and Null passes
/// never.
struct ScanValueTest {
    ScanOperator op = ScanOperator::Equal;
    double number = 0;

    bool operator==(const ScanValueTest&) const = default;
};

/// Rows whose number in a column is listed, or isn't; Null passes never.
struct ScanListTest {
    std::size_t column = 0;
    bool negated = false;
    std::string numbers; ///< the list as written

    bool operator==(const ScanListTest&) const = default;
};

enum class ScanFigureKind {
    Rows,        ///< how many rows
    Values,      ///< how many have a value
    Least,       ///< the text of the least value
    Greatest,    ///< and of the greatest
    Sum,         ///< a state for jet_scansum and jet_scanavg
    Spread,      ///< a state for jet_scanstdev and its like
    LeastRanked, ///< what is least, or greatest, of the second column of keys among the rows
    GreatestRanked,
    LeastOf,    ///< what is least, or greatest, of a ranked field of a side among the rows
    GreatestOf, ///<
    CountOf,    ///< how many rows have a ranked field of a side that is not Null
    FirstRow,   ///< the number of the first row in the order of the table
    FirstValue, ///< the text of its value
    FirstNumber ///< its number in a column
};

struct ScanFigure {
    ScanFigureKind kind = ScanFigureKind::Rows;
    std::size_t keys = 0;  ///< of a ranked one: place among the plan's keys, or its sides
    std::size_t field = 0; ///< of a side: place among its ranked fields; of FirstNumber: the column of the image

    bool operator==(const ScanFigure&) const = default;
};

/// Small tables, joined among themselves, that the rows meet by one or more numbers at a time. What they give to the
/// groups stands for them in the statement.
struct ScanSide {
    std::vector<std::size_t> columns; ///< of the image, which the keys are compared with
    std::string sql;                  ///< gives the keys, then the fields that tell groups apart, then the ranked ones
    std::vector<CompareKind> fields;  ///< how each of those that tell groups apart compares
    std::vector<CompareKind> ranked;
    bool single = false; ///< the outcome would be another if the same keys came twice

    bool operator==(const ScanSide&) const = default;
};

/// What rows are ordered by.
enum class ScanOrderKind {
    Value,
    Number, ///< of a column of the image
    Field   ///< of a side
};

struct ScanOrder {
    ScanOrderKind kind = ScanOrderKind::Value;
    std::size_t place = 0; ///< the column of the image; of a field: its place among those of all sides
    bool descending = false;

    bool operator==(const ScanOrder&) const = default;
};

struct ScanPlan {
    std::weak_ptr<const ColumnImage> image;
    std::string schemaName;          ///< under which the database of the image is attached
    std::size_t value = 0;           ///< the column of values
    std::vector<std::size_t> codes;  ///< columns that tell groups apart
    std::vector<ScanFigure> figures; ///< of each group
    std::vector<ScanKeys> keys;
    std::vector<ScanSide> sides;
    std::vector<ScanValueTest> values;
    std::vector<ScanListTest> lists;
    /// The groups are those of the statement, which are not put together any more.
    bool whole = false;
    /// Each different value is a group of its own; nothing else tells groups apart then.
    bool byValue = false;
    /// Each row is a group of its own, in this order; rows that are equal in it stand as in the table.
    bool byRow = false;
    std::vector<ScanOrder> order;
    /// Only which groups there are is asked for, so that the scan may end when it has met them all.
    bool existence = false;
    /// Only groups in which these two ranked figures differ.
    std::optional<std::pair<std::size_t, std::size_t>> differing;
    /// Only groups of more rows than that.
    std::uint32_t moreThan = 0;

    /// True for plans that give the same groups, of the same image.
    [[nodiscard]] bool sameAs(const ScanPlan& other) const {
        return !image.owner_before(other.image) && !other.image.owner_before(image) && schemaName == other.schemaName &&
               value == other.value && codes == other.codes && figures == other.figures && keys == other.keys &&
               sides == other.sides && values == other.values && lists == other.lists && whole == other.whole &&
               byValue == other.byValue && byRow == other.byRow && order == other.order &&
               existence == other.existence && differing == other.differing && moreThan == other.moreThan;
    }
};

/// Columns of the table that SQLite reads the groups from: g0 …, a0 …, x0 …
inline constexpr std::size_t kMostScanCodes = 8;
inline constexpr std::size_t kMostScanFigures = 16;
inline constexpr std::size_t kMostScanFields = 16; ///< of all sides together

} // namespace jet
