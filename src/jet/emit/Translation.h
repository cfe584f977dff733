#pragma once

#include "jet/values/Catalogue.h"
#include "jet/values/NumberList.h"
#include "jet/values/Value.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

/// The translation of a statement into SQLite's SQL, and its result.
namespace jet {

/// A column of a result: its name as the old engine gives it (alias, field name, or Expr1000 …) and its kind.
struct OutputColumn {
    std::string name;
    ColumnType type = ColumnType::Unknown;
    CompareKind kind = CompareKind::Text;
};

enum class StatementClass {
    Select, ///< gives rows
    Write,  ///< INSERT, UPDATE, DELETE
    Schema, ///< CREATE, DROP, SELECT … INTO: the catalogue is to be read again
};

/// What a statement of the class Schema does to its target.
enum class TargetChange {
    Other,    ///< nothing, or anything else
    Make,     ///< a query makes and fills it: the first text makes it, the last one fills it
    Drop,     ///< the table goes
    DropLink, ///< only the link goes, which is an entry of the catalogue: there is no SQLite text
};

/// A crosstab needs the distinct pivot values before its own text can be written.
struct PivotPlan {
    std::string valuesSql; ///< SQLite text: the distinct pivot values in ascending order, one column
    std::string head;      ///< text up to where the value columns go
    std::string column;    ///< one value column, with %VALUE% for the SQL literal and %NAME% for the quoted name
    std::string tail;      ///< the rest
    std::vector<Value> fixedValues; ///< PIVOT … IN (…): names given in the statement, then valuesSql is empty
    OutputColumn valueColumn;       ///< type and kind of each value column
};

/// SQLite text of one statement. `statements` run in order within a savepoint; the last one gives the rows or the count
/// of changed rows, those before it prepare it (the CREATE TABLE of a SELECT … INTO, for example).
struct Translation {
    StatementClass kind = StatementClass::Select;
    std::vector<std::string> statements;
    std::vector<OutputColumn> columns; ///< of a Select; of a crosstab the row heads only
    std::vector<ListParameter> lists;  ///< what the parameters ?1, ?2 … of the statements stand for
    std::vector<PivotPlan> pivot;      ///< empty, or one
    std::string
        connector; ///< SELECT … INTO [dBase IV;database=folder].name.dbf: the text in brackets; target is the rest
    std::string target; ///< table made, dropped or written to (its name in the statement)
    TargetChange change = TargetChange::Other;
    std::vector<std::string_view> steps; ///< names of the rewrites that changed the statement
    std::string droppedTable;            ///< of a Drop: the table as SQLite text names it
};

using LeftOutSteps = std::set<std::string, std::less<>>;

} // namespace jet
