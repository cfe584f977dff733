#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Columns, tables and the types of their values, as statements are translated by them.
namespace jet {

/// What a column holds, as CREATE TABLE names it. The file declares each with an SQLite type name that
/// keeps the right affinity (see DeclaredType), so that the kind can be read back from any file.
enum class ColumnType { Long, Integer, Double, Text, Memo, YesNo, Counter, Guid, DateTime, Binary, Unknown };

/// How the values of a column or expression compare, group and sort.
enum class CompareKind {
    Number,     ///< numbers; no collation, indexes can be used
    Identifier, ///< ASCII identifiers (columns ending in GId, and AreaID): ignoring case by SQLite's NOCASE, indexes
                ///< can be used
    Text,       ///< ignoring case over Unicode, accents told apart: collation JETTEXT
    ValueText,  ///< Datavalue: as numbers where both sides read as numbers, else as Text: collation JETVALUE
};

struct ColumnInfo {
    std::string name;
    ColumnType type = ColumnType::Unknown;
    bool nullable = true;
};

enum class TableType { Table, Link };

/// A table as a statement may name it. For a link, `database` is the schema name under which the file is
/// attached and `sourceTable` the table's own name there.
struct TableInfo {
    std::string name;
    TableType type = TableType::Table;
    std::string database = "main";
    std::string sourceTable;
    std::vector<ColumnInfo> columns;

    /// The column of this name, ignoring case; nullptr when there is none.
    [[nodiscard]] const ColumnInfo* column(std::string_view columnName) const;
};

class ColumnImage;

/// The tables and links by name, as name resolution needs them. LiveCatalogue reads them from the open file; tests
/// hand in a fixed list.
class Catalogue {
  public:
    virtual ~Catalogue() = default;
    /// The table of this name, ignoring case; nullptr when there is none. Valid until the catalogue changes.
    [[nodiscard]] virtual const TableInfo* find(std::string_view name) const = 0;
    /// True for a link, also when what it links to isn't there and find gives nothing.
    [[nodiscard]] virtual bool isLink(std::string_view /*name*/) const { return false; }
    /// Rises with every change of tables or links; a translation is valid as long as this number is the same.
    [[nodiscard]] virtual unsigned version() const = 0;
    /// The number of rows by the planner statistics (sqlite_stat1) of the table, which may be old; 0 without
    /// statistics.
    [[nodiscard]] virtual std::int64_t rowsOnRecord(const TableInfo& /*table*/) const { return 0; }
    /// True when an index holds the numbers of this field in order.
    [[nodiscard]] virtual bool leadsIndex(const TableInfo& /*table*/, const std::string& /*field*/) const {
        return false;
    }
    /// The column image of a large table; nullptr when there is none. To ask may have it made, for the next time.
    [[nodiscard]] virtual std::shared_ptr<const ColumnImage> image(const TableInfo& /*table*/) const { return nullptr; }
};

/// The kind that goes with a column: by its type, and by its name for Datavalue and the identifiers.
[[nodiscard]] CompareKind KindOfColumn(std::string_view name, ColumnType type);
/// The SQLite declaration that stands for a column type: Long "INTEGER" … and back from a declaration.
[[nodiscard]] std::string DeclaredType(ColumnType type, int width = 0);
[[nodiscard]] ColumnType TypeOfDeclaration(std::string_view declaration);
/// True for names that the engine keeps for its own tables (MSys…, sqlite_…): no statement makes, names or drops them.
[[nodiscard]] bool IsReservedName(std::string_view name);
/// True when two names are the same, ignoring ASCII and Unicode case.
[[nodiscard]] bool SameName(std::string_view a, std::string_view b);

} // namespace jet
