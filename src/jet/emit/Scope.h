#pragma once

#include "jet/emit/Translation.h"
#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"
#include "jet/values/Quoting.h"

#include <string>
#include <string_view>
#include <vector>

/// What the names of a statement mean: the tables of each query level and their fields.
namespace jet {

/// SQLite text of an expression with what is known of it.
struct Typed {
    std::string sql;
    CompareKind kind = CompareKind::Number;
    ColumnType type = ColumnType::Unknown; ///< Unknown: Null
    bool condition = false;                ///< a truth value of SQLite (1, 0, Null), not one of ours (-1, 0)
    bool literal = false;                  ///< a constant of the statement; `text` is its text
    std::string text = {};
    bool column = false;    ///< a bare field, for which an index may be used
    bool caseless = false;  ///< text without letters: it needs no collation
    char chain = 0;         ///< the operator of a term in brackets that further operands can be added to, else 0
    std::string terms = {}; ///< of such a term: what stands within its brackets
};

/// A table of a FROM clause: of the catalogue, or an inner query's result.
struct Source {
    std::size_t number = 0; ///< tells it apart from all others of the statement
    std::string alias;
    const TableInfo* table = nullptr;  ///< nullptr for an inner query
    std::vector<OutputColumn> columns; ///< as the result of the table or inner query has them
    std::string sql;                   ///< what stands in the FROM clause, with its alias

    /// The number of a row: alias.rowid, or another of its names where a field is called so.
    [[nodiscard]] std::string rowId() const;
    /// Position of the column of this name, ignoring case; -1 when there is none.
    [[nodiscard]] int find(std::string_view name) const;
    [[nodiscard]] std::string columnSql(std::size_t position) const;
};

/// The tables in which the names of one query level are looked up; after them those of the queries around it.
struct Scope {
    std::vector<Source> sources;
    const Scope* outer = nullptr;
    const std::vector<tree::SelectItem>* items = nullptr; ///< whose aliases a bare name may mean
    /// When set, fields are read from a derived table "source", as c0, c1 …; here is what each of them stands for.
    std::vector<std::string>* projected = nullptr;

    struct Found {
        const Source* source = nullptr;
        std::size_t column = 0;
        const Scope* level = nullptr;
    };
    /// What a name means; source is nullptr when no table has it. Throws SyntaxError when several of one level do.
    [[nodiscard]] Found lookUp(const tree::ColumnName& name, Position at) const;
    /// The item of the SELECT whose alias the name is; nullptr when there is none.
    [[nodiscard]] const tree::SelectItem* aliased(const tree::ColumnName& name) const;
    /// The same as lookUp; throws NoSuchColumn when no table has it.
    [[nodiscard]] Found resolve(const tree::ColumnName& name, Position at) const;
    [[nodiscard]] const Source* source(std::string_view alias) const;
};

/// A field as expressions of this scope name it.
[[nodiscard]] Typed Field(const Scope& scope, const Source& source, std::size_t column);
/// " COLLATE NOCASE" and so on; empty for numbers.
[[nodiscard]] std::string Collate(CompareKind kind);
/// The table of this name. Throws NoSuchTable.
[[nodiscard]] const TableInfo& TableNamed(const Catalogue& catalogue, const std::string& name);
/// schema."table" as it stands in a statement.
[[nodiscard]] std::string TableSql(const TableInfo& table);

} // namespace jet
