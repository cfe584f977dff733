#pragma once

#include "jet/emit/Scope.h"

#include <map>
#include <memory>
#include <optional>

namespace jet {

/// Writes syntax trees as SQLite text. Its functions are in several files: expressions, queries, changes of rows and of
/// tables.
class Emitter {
  public:
    /// `length` of the statement in bytes: what is written must stay in proportion to it.
    Emitter(const Catalogue& catalogue, std::size_t length) : catalogue_(catalogue), mostWork_(50'000 + 20 * length) {}

    [[nodiscard]] Translation translate(const tree::Statement& statement);

  private:
    // --- Expressions (EmitExpression.cpp, EmitFunction.cpp) ---
    Typed emit(const tree::Expression& expression, const Scope& scope);
    std::vector<Typed> emitAll(const std::vector<tree::ExpressionPtr>& expressions, const Scope& scope);
    Typed emitNode(const tree::NullLiteral& node, const Scope& scope, Position at);
    Typed emitNode(const tree::NumberLiteral& node, const Scope& scope, Position at);
    Typed emitNode(const tree::TextLiteral& node, const Scope& scope, Position at);
    Typed emitNode(const tree::DateLiteral& node, const Scope& scope, Position at);
    Typed emitNode(const tree::BooleanLiteral& node, const Scope& scope, Position at);
    Typed emitNode(const tree::ColumnName& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Arithmetic& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Negation& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Comparison& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Logical& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Not& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Between& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Like& node, const Scope& scope, Position at);
    Typed emitNode(const tree::IsNull& node, const Scope& scope, Position at);
    Typed emitNode(const tree::InList& node, const Scope& scope, Position at);
    Typed emitNode(const tree::InQuery& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Exists& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Quantified& node, const Scope& scope, Position at);
    Typed emitNode(const tree::ScalarQuery& node, const Scope& scope, Position at);
    Typed emitNode(const tree::Call& node, const Scope& scope, Position at);
    Typed emitNode(const tree::ScannedAggregate& node, const Scope& scope, Position at);
    Typed emitAggregate(const tree::Call& node, std::vector<Typed> arguments);
    /// The number of the row whose fields a First reads; nothing where the order of the rows decides.
    [[nodiscard]] std::optional<std::string> rowOfFirst(const tree::Call& node, const Scope& scope) const;
    [[nodiscard]] std::string Counted(const std::string& operand) const;
    std::optional<Typed> emitInline(const tree::Call& node, const std::vector<Typed>& arguments);
    std::string condition(const tree::Expression& expression, const Scope& scope);

    // --- Lists (EmitList.cpp) ---
    Typed emitNumberList(const tree::InList& node, const Scope& scope);
    std::string parameterFor(const tree::InList& node, ListParameter list);

    // --- Queries (EmitQuery.cpp, EmitFrom.cpp) ---
    struct Join {
        std::size_t source = 0; ///< index in the scope
        std::string on;         ///< outer-joined: its condition; empty for inner
        std::string text;       ///< outer-joined group in brackets instead of one source
    };
    struct FromClause {
        std::vector<Join> order;             ///< as the FROM clause is written
        std::vector<std::string> conditions; ///< of inner joins, to stand in WHERE
        bool outerJoins = false;
    };
    struct SelectText {
        std::string sql;
        std::vector<OutputColumn> columns;
    };
    struct Item {
        Typed value;
        std::string name;
        const Source* source = nullptr;               ///< of a plain field
        std::size_t column = 0;                       ///< its place among the source's
        const tree::Expression* expression = nullptr; ///< none for a field that a star stands for
        std::size_t readBefore = 0;                   ///< fields that had been read before it was written, and after
        std::size_t readAfter = 0;
    };
    void declare(const std::vector<tree::TableReferencePtr>& from, Scope& scope);
    void declare(const tree::TableReference& reference, Scope& scope);
    void declareScan(const tree::ScanTable& scan, Source& source);
    std::size_t parameterFor(ScanPlan plan);
    FromClause flatten(const std::vector<tree::TableReferencePtr>& from, const Scope& scope);
    FromClause flatten(const tree::TableReference& reference, const Scope& scope, std::size_t& next);
    static std::string fromText(const FromClause& from, const Scope& scope);
    std::string fromWhere(const std::vector<tree::TableReferencePtr>& from, const tree::Expression* where,
                          const Scope& scope);
    SelectText emitQuery(const tree::Query& query, const Scope* outer);
    SelectText emitUnion(const tree::Query& query, const Scope* outer);
    std::vector<Item> items(const tree::Select& select, const Scope& scope);
    std::string itemList(const std::vector<Item>& items, bool collated) const;
    std::string groupTerms(const tree::Select& select, const Scope& scope);
    std::string groupBy(const tree::Select& select, const std::vector<Item>& items, const Scope& scope);
    struct OrderKey {
        Typed value;
        bool descending = false;
        bool isItem = false; ///< named by the position or the name of a field of the result

        [[nodiscard]] std::string text() const;
    };
    /// A SELECT whose expressions are written, but not yet put together: a union first compares the fields of all.
    struct ReadSelect {
        const tree::Select* select = nullptr;
        std::unique_ptr<Scope> scope; ///< the items point into it
        std::vector<Item> items;
        std::string tail; ///< FROM, WHERE, GROUP BY and HAVING
        std::vector<OrderKey> keys;

        [[nodiscard]] std::vector<OutputColumn> columns() const;
    };
    ReadSelect readSelect(const tree::Select& select, const std::vector<tree::OrderItem>& orderBy, const Scope* outer);
    [[nodiscard]] static std::string jumpsText(const ReadSelect& read);
    /// `collated`: each field is given the collation of its kind.
    [[nodiscard]] std::string written(const ReadSelect& read, bool collated) const;
    static bool SortsByCounter(const tree::Select& select, const Scope& scope, const std::vector<OrderKey>& keys);
    std::vector<OrderKey> orderKeys(const std::vector<tree::OrderItem>& orderBy, const std::vector<Item>& items,
                                    const Scope& scope);
    static void checkDistinctOrder(const std::vector<tree::OrderItem>& orderBy, const std::vector<OrderKey>& keys,
                                   const std::vector<Item>& items, const Scope& scope);
    /// True when one of the fields written from `before` to `after` belongs to the source.
    [[nodiscard]] bool Read(const Source& source, std::size_t before, std::size_t after) const;
    static void KeyValues(std::vector<OrderKey>& keys);
    static std::string topText(const tree::Select& select, const std::string& fields, const std::string& tail,
                               const std::vector<Item>& items, const std::vector<OrderKey>& keys);

    // --- Statements (EmitStatement.cpp, EmitUpdate.cpp, EmitSchema.cpp, EmitPivot.cpp) ---
    Translation statement(const tree::Query& query);
    Translation statement(const tree::Transform& transform);
    Translation statement(const tree::Insert& insert);
    Translation statement(const tree::Update& update);
    Translation statement(const tree::Delete& remove);
    Translation statement(const tree::CreateTable& create);
    Translation statement(const tree::CreateIndex& create);
    Translation statement(const tree::DropTable& drop);
    Translation statement(const tree::DropIndex& drop);
    Translation statement(const tree::AlterTable& alter);
    std::string definition(const tree::ColumnDefinition& column);
    std::string defaultText(const tree::ColumnDefinition& column);
    Translation makeTable(const tree::Query& query);
    struct Changes {
        const Source* target = nullptr;
        std::vector<std::string> fields;
        std::vector<std::string> values;
        bool beyond = false; ///< the values read other tables than the target
    };
    std::vector<Changes> changesByTarget(const tree::Update& update, const Scope& scope);
    std::string matchingRows(const tree::Update& update, const Scope& scope, const std::string& columns);
    std::string updateOne(const tree::Update& update, const Changes& changes, const Scope& scope);
    std::vector<std::string> updateSeveral(const tree::Update& update, const std::vector<Changes>& all,
                                           const Scope& scope);

    const Catalogue& catalogue_;
    std::string aggregateFilter_; ///< stands behind every aggregate of a crosstab's value
    int aliasDepth_ = 0;
    std::size_t aliasText_ = 0; ///< bytes written for names that stand for other expressions
    std::size_t work_ = 0;      ///< expressions written, each as often as it was
    std::size_t mostWork_;
    std::size_t sources_ = 0;       ///< declared so far
    std::vector<std::size_t> read_; ///< the number of the source of each field written so far
    std::vector<ListParameter> lists_;
    std::map<const tree::InList*, std::size_t> listNumbers_; ///< what a name of the result stands for is written again
};

/// A truth value of SQLite, in brackets.
[[nodiscard]] Typed Condition(std::string sql);
/// The value as ours: a truth value becomes -1 or 0.
[[nodiscard]] std::string AsValue(const Typed& value);
/// The value as a condition of SQLite.
[[nodiscard]] std::string AsCondition(const Typed& value);
/// The value as number; text is read, and fails the statement when it can't be.
[[nodiscard]] std::string AsNumber(const Typed& value);
/// The value as it goes into a column of this type.
[[nodiscard]] std::string AsStored(const Typed& value, ColumnType type);
/// SQLite text of a comparison under the rules of both kinds.
[[nodiscard]] std::string Compared(const Typed& left, const char* op, const Typed& right);
/// True when the expression computes over groups of rows; inner queries have groups of their own.
[[nodiscard]] bool HoldsAggregate(const tree::Expression& expression);
/// In a grouped query a field stands for one value of its group only when it is grouped by, or within an aggregate.
/// Throws OutsideGroups for any other.
void CheckGroups(const tree::Select& select, const std::vector<tree::OrderItem>& orderBy, const Scope& scope);
/// A statement of one text that changes `target`.
[[nodiscard]] Translation Change(StatementClass kind, std::string sql, std::string target);
/// Position of a field of a table. Throws NoSuchColumn.
[[nodiscard]] std::size_t FieldOf(const TableInfo& table, const std::string& name);
/// Throws ReadOnly for a name that no statement may make or drop.
void RefuseReservedName(const std::string& table);
/// A column declaration for CREATE TABLE.
[[nodiscard]] std::string ColumnDeclaration(const std::string& name, ColumnType type, int width = 0);

} // namespace jet
