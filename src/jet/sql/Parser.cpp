#include "jet/sql/Parser.h"

#include "jet/sql/ParserBase.h"
#include "jet/values/Collation.h"

#include <array>

namespace jet {

using namespace tree;

namespace {

struct TypeName {
    std::string_view word;
    ColumnType type;
};

constexpr std::array kTypeNames = {
    TypeName{"long", ColumnType::Long},
    TypeName{"integer", ColumnType::Long},
    TypeName{"int", ColumnType::Long},
    TypeName{"integer4", ColumnType::Long},
    TypeName{"short", ColumnType::Integer},
    TypeName{"smallint", ColumnType::Integer},
    TypeName{"integer2", ColumnType::Integer},
    TypeName{"byte", ColumnType::Integer},
    TypeName{"tinyint", ColumnType::Integer},
    TypeName{"double", ColumnType::Double},
    TypeName{"float", ColumnType::Double},
    TypeName{"single", ColumnType::Double},
    TypeName{"real", ColumnType::Double},
    TypeName{"number", ColumnType::Double},
    TypeName{"numeric", ColumnType::Double},
    TypeName{"decimal", ColumnType::Double},
    TypeName{"currency", ColumnType::Double},
    TypeName{"money", ColumnType::Double},
    TypeName{"text", ColumnType::Text},
    TypeName{"varchar", ColumnType::Text},
    TypeName{"nvarchar", ColumnType::Text},
    TypeName{"char", ColumnType::Text},
    TypeName{"nchar", ColumnType::Text},
    TypeName{"character", ColumnType::Text},
    TypeName{"string", ColumnType::Text},
    TypeName{"alphanumeric", ColumnType::Text},
    TypeName{"memo", ColumnType::Memo},
    TypeName{"longtext", ColumnType::Memo},
    TypeName{"longchar", ColumnType::Memo},
    TypeName{"note", ColumnType::Memo},
    TypeName{"yesno", ColumnType::YesNo},
    TypeName{"bit", ColumnType::YesNo},
    TypeName{"boolean", ColumnType::YesNo},
    TypeName{"logical", ColumnType::YesNo},
    TypeName{"counter", ColumnType::Counter},
    TypeName{"autoincrement", ColumnType::Counter},
    TypeName{"identity", ColumnType::Counter},
    TypeName{"guid", ColumnType::Guid},
    TypeName{"uniqueidentifier", ColumnType::Guid},
    TypeName{"datetime", ColumnType::DateTime},
    TypeName{"date", ColumnType::DateTime},
    TypeName{"time", ColumnType::DateTime},
    TypeName{"timestamp", ColumnType::DateTime},
    TypeName{"longbinary", ColumnType::Binary},
    TypeName{"binary", ColumnType::Binary},
    TypeName{"varbinary", ColumnType::Binary},
    TypeName{"oleobject", ColumnType::Binary},
    TypeName{"image", ColumnType::Binary},
};

class StatementParser final : public ExpressionParser {
  public:
    using ExpressionParser::ExpressionParser;

    Statement run() {
        Statement statement = any();
        takeSymbol(";");
        if (current().kind != TokenKind::End) fail("Nothing is expected behind the end of the statement");
        return statement;
    }

  private:
    Statement any() {
        if (isWord("select")) return std::move(*query());
        if (isSymbol("(")) return std::move(*query());
        if (takeWord("transform")) return transform();
        if (takeWord("insert")) return insert();
        if (takeWord("update")) return update();
        if (takeWord("delete")) return remove();
        if (takeWord("create")) return create();
        if (takeWord("drop")) return drop();
        if (takeWord("alter")) return alter();
        fail("Expected SELECT, INSERT, UPDATE, DELETE, TRANSFORM, CREATE, DROP or ALTER");
    }

    // --- Queries ---

    QueryPtr query() override {
        const Nesting nesting(*this);
        auto made = std::make_unique<Query>();
        arm(*made);
        while (takeWord("union")) {
            made->keepAll.push_back(takeWord("all"));
            arm(*made);
        }
        if (takeWord("order")) {
            expectWord("by");
            made->orderBy = orderList();
        }
        return made;
    }

    void arm(Query& made) {
        if (takeSymbol("(")) {
            const Nesting nesting(*this);
            arm(made);
            expectSymbol(")");
            return;
        }
        made.arms.push_back(select());
    }

    std::vector<OrderItem> orderList() {
        std::vector<OrderItem> items;
        do {
            OrderItem item{expression(), false};
            item.descending = takeWord("desc") || takeWord("descending");
            if (!item.descending && !takeWord("asc")) takeWord("ascending");
            items.push_back(std::move(item));
        } while (takeSymbol(","));
        return items;
    }

    Select select() {
        Select made;
        made.at = current().at;
        expectWord("select");
        if (takeWord("distinctrow"))
            made.duplicates = Duplicates::DropEqualRows;
        else if (takeWord("distinct"))
            made.duplicates = Duplicates::DropEqualValues;
        else
            takeWord("all");
        if (isWord("top") && ahead().kind == TokenKind::Number) {
            next();
            made.top = Top{current().text, false};
            next();
            made.top->percent = takeWord("percent");
        }
        do
            made.items.push_back(selectItem());
        while (takeSymbol(","));
        if (takeWord("into")) intoTarget(made);
        if (takeWord("from")) made.from = tableList();
        if (takeWord("where")) made.where = expression();
        if (takeWord("group")) {
            expectWord("by");
            do
                made.groupBy.push_back(expression());
            while (takeSymbol(","));
        }
        if (takeWord("having")) made.having = expression();
        return made;
    }

    SelectItem selectItem() {
        SelectItem item;
        item.at = current().at;
        if (takeSymbol("*")) return item;
        const bool starOfTable = isName() && ahead().kind == TokenKind::Symbol && ahead().text == "." &&
                                 ahead(2).kind == TokenKind::Symbol && ahead(2).text == "*";
        if (starOfTable) {
            item.starTable = expectName("a table");
            expectSymbol(".");
            expectSymbol("*");
            return item;
        }
        item.expression = expression();
        if (!takeWord("as")) return item;
        // Some statements give the name in quotes.
        if (current().kind == TokenKind::Text && !current().text.empty()) {
            item.alias = current().text;
            next();
        } else {
            item.alias = expectName("a name for the column");
        }
        return item;
    }

    // [dBase IV;database=folder].name.dbf names a table of another format.
    void intoTarget(Select& made) {
        made.into = expectName("the table to make");
        while (takeSymbol(".")) {
            if (made.intoConnector.empty())
                made.intoConnector = std::exchange(made.into, {});
            else
                made.into += '.';
            made.into += expectName("the table to make");
        }
    }

    std::vector<TableReferencePtr> tableList() {
        std::vector<TableReferencePtr> tables;
        do
            tables.push_back(joinChain());
        while (takeSymbol(","));
        return tables;
    }

    TableReferencePtr joinChain() {
        TableReferencePtr left = tableFactor();
        for (;;) {
            Join join;
            const Position at = current().at;
            if (isWord("inner") || isWord("join")) {
                takeWord("inner");
            } else if (isWord("left") || isWord("right")) {
                join.kind = isWord("left") ? JoinKind::Left : JoinKind::Right;
                next();
                takeWord("outer");
            } else {
                return left;
            }
            expectWord("join");
            countChained();
            join.left = std::move(left);
            join.right = tableFactor();
            // A JOIN b JOIN c ON … ON …: the inner join's condition comes first.
            if (!isWord("on")) join.right = innerChain(std::move(join.right));
            expectWord("on");
            join.on = expression();
            left = std::make_unique<TableReference>();
            left->at = at;
            left->node = std::move(join);
        }
    }

    TableReferencePtr innerChain(TableReferencePtr left) {
        const Nesting nesting(*this);
        const Position at = current().at;
        Join join;
        if (isWord("left") || isWord("right")) {
            join.kind = isWord("left") ? JoinKind::Left : JoinKind::Right;
            next();
            takeWord("outer");
        } else if (isWord("inner") || isWord("join")) {
            takeWord("inner");
        } else {
            fail("Expected 'ON'");
        }
        expectWord("join");
        join.left = std::move(left);
        join.right = tableFactor();
        if (!isWord("on")) join.right = innerChain(std::move(join.right));
        expectWord("on");
        join.on = expression();
        auto made = std::make_unique<TableReference>();
        made->at = at;
        made->node = std::move(join);
        return made;
    }

    TableReferencePtr tableFactor() {
        const Nesting nesting(*this);
        auto made = std::make_unique<TableReference>();
        made->at = current().at;
        if (takeSymbol("(")) {
            if (isWord("select")) {
                DerivedTable derived{query(), {}};
                expectSymbol(")");
                // A derived table without an alias: its fields are found by their own names.
                if (takeWord("as") || isName())
                    derived.alias = expectName("a name for the inner query");
                else
                    derived.alias = "%inner" + std::to_string(made->at.line) + "_" + std::to_string(made->at.column);
                made->node = std::move(derived);
                return made;
            }
            TableReferencePtr inner = joinChain();
            expectSymbol(")");
            return inner;
        }
        NamedTable table{expectName("a table"), {}};
        table.alias = table.name;
        if (takeWord("as"))
            table.alias = expectName("a name for the table");
        else if (isName())
            table.alias = expectName("a name for the table");
        made->node = std::move(table);
        return made;
    }

    Statement transform() {
        Transform made;
        made.value = expression();
        if (takeWord("as")) expectName("a name for the value");
        made.query = std::move(*query());
        expectWord("pivot");
        made.pivot = concatenation(); // IN behind it lists the columns
        if (takeWord("in")) {
            expectSymbol("(");
            if (current().kind == TokenKind::NumberList)
                made.columns = pivotNumbers();
            else
                do
                    made.columns.push_back(pivotColumn());
                while (takeSymbol(","));
            expectSymbol(")");
            made.columnsGiven = true;
        }
        return made;
    }

    std::vector<std::string> pivotNumbers() {
        std::vector<std::string> numbers(1);
        for (const char c : current().text) {
            if (c == ',')
                numbers.emplace_back();
            else if (c == '-' || (c >= '0' && c <= '9'))
                numbers.back() += c;
        }
        next();
        return numbers;
    }

    /// A constant, or a bare word, which stands for itself.
    std::string pivotColumn() {
        const Position at = current().at;
        const ExpressionPtr value = expression();
        const auto* negation = std::get_if<Negation>(&value->node);
        const Expression& constant = negation ? *negation->operand : *value;
        if (const auto* number = std::get_if<NumberLiteral>(&constant.node))
            return (negation ? "-" : "") + number->text;
        if (const auto* text = std::get_if<TextLiteral>(&constant.node); text && !negation) return text->text;
        if (const auto* date = std::get_if<DateLiteral>(&constant.node); date && !negation) return date->text;
        if (const auto* yes = std::get_if<BooleanLiteral>(&constant.node); yes && !negation)
            return yes->value ? "-1" : "0";
        if (const auto* name = std::get_if<ColumnName>(&constant.node); name && !negation && name->table.empty())
            return name->name;
        FailAt(at, "Expected a value for a column");
    }

    // --- Changes ---

    Statement insert() {
        Insert made;
        expectWord("into");
        made.at = current().at;
        made.table = expectName("a table");
        if (isSymbol("(") && !isSelectAhead()) {
            next();
            do {
                std::string column = expectName("a field");
                if (takeSymbol(".")) column = expectName("a field");
                made.columns.push_back(std::move(column));
            } while (takeSymbol(","));
            expectSymbol(")");
        }
        if (takeWord("values")) {
            do
                made.rows.push_back(valueRow());
            while (takeSymbol(","));
            return made;
        }
        if (!isWord("select") && !isSymbol("(")) fail("Expected VALUES or SELECT");
        made.query = query();
        return made;
    }

    [[nodiscard]] bool isSelectAhead() const { return isWord(ahead(), "select"); }

    std::vector<ExpressionPtr> valueRow() {
        std::vector<ExpressionPtr> row;
        expectSymbol("(");
        do
            row.push_back(expression());
        while (takeSymbol(","));
        expectSymbol(")");
        return row;
    }

    Statement update() {
        Update made;
        takeWord("distinctrow");
        made.tables = tableList();
        expectWord("set");
        do {
            Assignment assignment;
            assignment.at = current().at;
            assignment.target.name = expectName("a field");
            if (takeSymbol(".")) {
                assignment.target.table = std::move(assignment.target.name);
                assignment.target.name = expectName("a field");
            }
            expectSymbol("=");
            assignment.value = expression();
            made.assignments.push_back(std::move(assignment));
        } while (takeSymbol(","));
        if (takeWord("where")) made.where = expression();
        return made;
    }

    Statement remove() {
        Delete made;
        made.at = current().at;
        takeWord("distinctrow");
        if (!takeSymbol("*") && !isWord("from")) {
            made.table = expectName("a table");
            expectSymbol(".");
            expectSymbol("*");
        }
        expectWord("from");
        made.tables = tableList();
        if (takeWord("where")) made.where = expression();
        return made;
    }

    // --- Schema ---

    Statement create() {
        const bool unique = takeWord("unique");
        if (takeWord("index")) return createIndex(unique);
        if (unique) fail("Expected 'INDEX'");
        expectWord("table");
        CreateTable made;
        made.table = expectName("a table");
        expectSymbol("(");
        do
            columnOrKey(made);
        while (takeSymbol(","));
        expectSymbol(")");
        if (made.columns.empty()) fail("A table needs a field");
        return made;
    }

    void columnOrKey(CreateTable& made) {
        if (takeWord("constraint")) {
            expectName("a name for the constraint");
            made.keys.push_back(tableKey());
        } else if (isWord("primary") || (isWord("unique") && ahead().text == "(")) {
            made.keys.push_back(tableKey());
        } else {
            made.columns.push_back(columnDefinition());
        }
    }

    KeyDefinition tableKey() {
        KeyDefinition key;
        key.primary = takeWord("primary");
        expectWord(key.primary ? "key" : "unique");
        expectSymbol("(");
        do
            key.columns.push_back(expectName("a field"));
        while (takeSymbol(","));
        expectSymbol(")");
        return key;
    }

    ColumnDefinition columnDefinition() {
        ColumnDefinition column;
        column.name = expectName("a field");
        column.type = typeName();
        if (takeSymbol("(")) {
            if (current().kind != TokenKind::Number) fail("Expected a width");
            column.width = std::atoi(current().text.c_str());
            next();
            while (takeSymbol(",")) { // the scale of a decimal, the step of a counter
                takeSymbol("-");
                next();
            }
            expectSymbol(")");
        }
        for (;;) {
            if (takeWord("not")) {
                expectWord("null");
                column.notNull = true;
            } else if (takeWord("null")) {
                column.notNull = false;
            } else if (takeWord("constraint")) {
                expectName("a name for the constraint");
            } else if (takeWord("primary")) {
                expectWord("key");
                column.primaryKey = true;
            } else if (takeWord("unique")) {
                column.unique = true;
            } else if (takeWord("with")) {
                if (!takeWord("compression")) expectWord("comp");
            } else if (takeWord("default")) {
                column.defaultValue = sign(); // looser operators would swallow NOT NULL
            } else {
                return column;
            }
        }
    }

    ColumnType typeName() {
        for (const TypeName& each : kTypeNames) {
            if (!isWord(each.word)) continue;
            next();
            if (each.word == "double") takeWord("precision");
            if (each.word == "long") {
                if (takeWord("integer")) return ColumnType::Long;
                if (takeWord("text")) return ColumnType::Memo;
            }
            return each.type;
        }
        // A field without a type takes anything, as SQLite has it.
        if (isSymbol(",") || isSymbol(")")) return ColumnType::Unknown;
        fail("Expected a type");
    }

    Statement createIndex(bool unique) {
        CreateIndex made;
        made.unique = unique;
        made.name = expectName("a name for the index");
        expectWord("on");
        made.table = expectName("a table");
        expectSymbol("(");
        do {
            IndexColumn column{expectName("a field"), false};
            column.descending = takeWord("desc");
            if (!column.descending) takeWord("asc");
            made.columns.push_back(std::move(column));
        } while (takeSymbol(","));
        expectSymbol(")");
        if (takeWord("with")) { // WITH PRIMARY, DISALLOW NULL, IGNORE NULL
            made.unique = made.unique || isWord("primary");
            while (current().kind == TokenKind::Name)
                next();
        }
        return made;
    }

    Statement drop() {
        if (takeWord("index")) {
            DropIndex made;
            made.name = expectName("an index");
            expectWord("on");
            made.table = expectName("a table");
            return made;
        }
        expectWord("table");
        return DropTable{expectName("a table")};
    }

    Statement alter() {
        AlterTable made;
        expectWord("table");
        made.table = expectName("a table");
        if (takeWord("drop")) {
            takeWord("column");
            made.dropped = expectName("a field");
            return made;
        }
        expectWord("add");
        takeWord("column");
        made.added = columnDefinition();
        return made;
    }
};

} // namespace

Statement Parse(std::string_view sql) {
    return StatementParser(sql).run();
}

} // namespace jet
