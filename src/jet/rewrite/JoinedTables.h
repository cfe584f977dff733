#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

#include <cstdint>
#include <vector>

namespace jet {

/// Tables of a FROM clause as bits of a number.
using TableSet = std::uint64_t;
[[nodiscard]] constexpr TableSet Bit(std::size_t table) {
    return TableSet{1} << table;
}

/// The tables and conditions of a SELECT over inner joins, for steps that share them out anew.
class JoinedTables {
  protected:
    JoinedTables(tree::Select& select, const std::vector<tree::OrderItem>& orderBy, const Catalogue& catalogue)
        : select_(select), orderBy_(orderBy), catalogue_(catalogue) {}
    ~JoinedTables() = default;

    struct JoinedTable {
        tree::NamedTable name;
        const TableInfo* info = nullptr;
    };
    struct Condition {
        tree::ExpressionPtr expression;
        TableSet tables = 0;
    };

    // --- Reading, without a change to the tree ---

    /// False when the clause has anything but tables of the catalogue and inner joins.
    bool ReadTables();
    /// Adds the tables that an expression reads; False when the table of a name is not known, or the expression is of a
    /// kind that the rewrites leave alone.
    bool AddTables(const tree::Expression& expression, TableSet& tables) const;
    /// The only table that can be meant; the number of tables when there is none or more than one.
    [[nodiscard]] std::size_t TableOf(const tree::ColumnName& column) const;
    [[nodiscard]] bool AllConditionsArePlaced() const;
    /// True for the name of a field of the result.
    [[nodiscard]] bool IsAlias(const tree::Expression& expression) const;
    [[nodiscard]] std::int64_t RowsOf(TableSet one) const;
    /// True for a bare field of a known table that holds numbers.
    [[nodiscard]] bool IsNumberColumn(const tree::Expression& expression) const;

    // --- Rewriting ---

    /// Moves all conditions, of WHERE and of the joins, into the list; the tree has none any more then.
    void TakeConditions();
    [[nodiscard]] std::vector<tree::TableReferencePtr> References(TableSet set) const;
    /// "SELECT item FROM set WHERE where"
    [[nodiscard]] tree::QueryPtr QueryOf(TableSet set, tree::ExpressionPtr item, tree::ExpressionPtr where) const;

    tree::Select& select_;
    const std::vector<tree::OrderItem>& orderBy_;
    const Catalogue& catalogue_;
    std::vector<JoinedTable> tables_;
    std::vector<Condition> conditions_;

  private:
    bool ReadTable(const tree::TableReference& reference);
    [[nodiscard]] bool ConditionsArePlaced(const tree::TableReference& reference) const;
    void TakeFrom(tree::TableReference& reference);
    void TakeCondition(tree::ExpressionPtr expression);
};

} // namespace jet
