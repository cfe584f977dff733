#pragma once

#include "jet/columns/ScanPlan.h"
#include "jet/sql/Lexer.h"
#include "jet/values/Catalogue.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// The syntax tree of one statement: plain data, names as they were written.
namespace jet::tree {

struct Expression;
struct Query;
using ExpressionPtr = std::unique_ptr<Expression>;
using QueryPtr = std::unique_ptr<Query>;

// --- Expressions ---

struct NullLiteral {};
struct NumberLiteral {
    std::string text;
};
struct TextLiteral {
    std::string text;
};
/// In the form in which dates are stored: yyyy-mm-dd, and hh:nn:ss behind it unless the time is midnight.
struct DateLiteral {
    std::string text;
};
struct BooleanLiteral {
    bool value = false;
};
struct ColumnName {
    std::string table; ///< empty when unqualified
    std::string name;
    bool bracketed = false;
    bool unindexed = false; ///< set by rewrites: no index is to be used, or made, for it here
};

enum class ArithmeticOperator { Add, Subtract, Multiply, Divide, WholeDivide, Modulo, Power, Concatenate };
struct Arithmetic {
    ArithmeticOperator op = ArithmeticOperator::Add;
    ExpressionPtr left;
    ExpressionPtr right;
};
struct Negation {
    ExpressionPtr operand;
};

enum class ComparisonOperator { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };
struct Comparison {
    ComparisonOperator op = ComparisonOperator::Equal;
    ExpressionPtr left;
    ExpressionPtr right;
};

/// A chain of one operator is one node with all operands, so that long chains make no deep tree. Imp works from left to
/// right.
enum class LogicalOperator { And, Or, Xor, Eqv, Imp };
struct Logical {
    LogicalOperator op = LogicalOperator::And;
    std::vector<ExpressionPtr> operands;
};
struct Not {
    ExpressionPtr operand;
};

struct Between {
    bool negated = false;
    ExpressionPtr operand;
    ExpressionPtr low;
    ExpressionPtr high;
};
struct Like {
    bool negated = false;
    ExpressionPtr operand;
    ExpressionPtr pattern;
};
struct IsNull {
    bool negated = false;
    ExpressionPtr operand;
};
struct InList {
    bool negated = false;
    ExpressionPtr operand;
    std::vector<ExpressionPtr> values;
    std::string numbers; ///< in place of the values when all are whole numbers: the list as written
};
struct InQuery {
    bool negated = false;
    ExpressionPtr operand;
    QueryPtr query;
    std::vector<ExpressionPtr> further =
        {}; ///< compared with the second, third … field of the query; only rewrites make them
};
struct Exists {
    QueryPtr query;
};
/// a > ALL (SELECT …), a = ANY (SELECT …); SOME is another word for ANY.
struct Quantified {
    ComparisonOperator op = ComparisonOperator::Equal;
    bool all = false;
    ExpressionPtr operand;
    QueryPtr query;
};
struct ScalarQuery {
    QueryPtr query;
};
struct Call {
    std::string name;
    bool star = false;     ///< Count(*)
    bool distinct = false; ///< Count(DISTINCT x)
    std::vector<ExpressionPtr> arguments;
};

/// An aggregate whose figures for parts of a group a ScanTable has computed; only rewrites make it.
struct ScannedAggregate {
    std::string table; ///< alias of the ScanTable
    std::size_t figure = 0;
    std::string function; ///< of the dialect, in lower case
    CompareKind kind = CompareKind::Number;
    ColumnType type = ColumnType::Long;
    bool whole = false;                             ///< the figure is that of a whole group
    std::shared_ptr<Expression> argument = nullptr; ///< of First: read from the first row of each part
};

struct Expression {
    using Node = std::variant<NullLiteral, NumberLiteral, TextLiteral, DateLiteral, BooleanLiteral, ColumnName,
                              Arithmetic, Negation, Comparison, Logical, Not, Between, Like, IsNull, InList, InQuery,
                              Exists, Quantified, ScalarQuery, Call, ScannedAggregate>;
    Position at;
    Node node;
};

// --- Queries ---

struct TableReference;
using TableReferencePtr = std::unique_ptr<TableReference>;

struct NamedTable {
    std::string name;
    std::string alias; ///< the name itself when none is given
};
struct DerivedTable {
    QueryPtr query;
    std::string alias;
};
/// A large table read from its column image: one row for each combination of the fields that tell groups apart, with
/// the figures of its rows. Only rewrites make it.
struct ScanField {
    std::string name;   ///< in the statement
    std::string column; ///< of the table that gives the groups
    ColumnType type = ColumnType::Unknown;
    CompareKind kind = CompareKind::Number;
};
struct ScanTable {
    std::string alias;
    std::vector<ColumnInfo> fields; ///< by which groups are told apart: the plan's codes
    ScanPlan plan;                  ///< without the texts of its keys and sides
    std::vector<QueryPtr> keys;     ///< the queries of the plan's keys
    std::vector<QueryPtr> sides;    ///< and of its sides
    std::vector<ScanField> further; ///< what else the statement reads
};
enum class JoinKind { Inner, Left, Right };
struct Join {
    JoinKind kind = JoinKind::Inner;
    TableReferencePtr left;
    TableReferencePtr right;
    ExpressionPtr on;
};
struct TableReference {
    Position at;
    std::variant<NamedTable, DerivedTable, Join, ScanTable> node;
};

struct SelectItem {
    ExpressionPtr expression; ///< empty for a star
    std::string starTable;    ///< of A.*; empty for a bare *
    std::string alias;
    Position at;
};
struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};
struct Top {
    std::string count; ///< digits
    bool percent = false;
};

enum class Duplicates { Keep, DropEqualValues, DropEqualRows };
struct Select {
    Duplicates duplicates = Duplicates::Keep;
    std::optional<Top> top;
    std::vector<SelectItem> items;
    std::string into;          ///< SELECT … INTO: the table to be made
    std::string intoConnector; ///< the foreign format that the target is to have: [dBase IV;…]
    std::vector<TableReferencePtr> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
    bool byJumps = false; ///< DISTINCT of a number, each found through an index behind the one before
    Position at;
};

/// One SELECT, or several with UNION between them; keepAll[i] tells whether the union before arms[i + 1] is UNION ALL.
struct Query {
    std::vector<Select> arms;
    std::vector<bool> keepAll;
    std::vector<OrderItem> orderBy;
};

struct Transform {
    ExpressionPtr value;
    Query query;
    ExpressionPtr pivot;
    std::vector<std::string> columns; ///< PIVOT … IN (…)
    bool columnsGiven = false;
};

// --- Changes ---

struct Insert {
    std::string table;
    std::vector<std::string> columns; ///< empty when none are given
    std::vector<std::vector<ExpressionPtr>> rows;
    QueryPtr query;
    Position at;
};
struct Assignment {
    ColumnName target;
    ExpressionPtr value;
    Position at;
};
struct Update {
    std::vector<TableReferencePtr> tables;
    std::vector<Assignment> assignments;
    ExpressionPtr where;
    ExpressionPtr pattern; ///< a Like that must hold as well, with a pattern that is no literal; empty at first
};
struct Delete {
    std::string table; ///< of DELETE t.* FROM …; empty for * and for nothing
    std::vector<TableReferencePtr> tables;
    ExpressionPtr where;
    Position at;
};

// --- Schema ---

struct ColumnDefinition {
    std::string name;
    ColumnType type = ColumnType::Text;
    int width = 0;
    bool notNull = false;
    bool primaryKey = false;
    bool unique = false;
    ExpressionPtr defaultValue;
};
struct KeyDefinition {
    bool primary = false; ///< else UNIQUE
    std::vector<std::string> columns;
};
struct CreateTable {
    std::string table;
    std::vector<ColumnDefinition> columns;
    std::vector<KeyDefinition> keys;
};
struct IndexColumn {
    std::string name;
    bool descending = false;
};
struct CreateIndex {
    std::string name;
    std::string table;
    bool unique = false;
    std::vector<IndexColumn> columns;
};
struct DropTable {
    std::string table;
};
struct DropIndex {
    std::string name;
    std::string table;
};
struct AlterTable {
    std::string table;
    std::optional<ColumnDefinition> added;
    std::string dropped;
};

using Statement =
    std::variant<Query, Transform, Insert, Update, Delete, CreateTable, CreateIndex, DropTable, DropIndex, AlterTable>;

} // namespace jet::tree
