#include "jet/functions/Functions.h"
#include "jet/sql/MakeTree.h"
#include "jet/sql/ParserBase.h"
#include "jet/values/Collation.h"
#include "jet/values/Dates.h"

#include <optional>

namespace jet {

using namespace tree;

namespace {

std::optional<ComparisonOperator> ComparisonOf(const Token& token) {
    if (token.kind != TokenKind::Symbol) return std::nullopt;
    if (token.text == "=") return ComparisonOperator::Equal;
    if (token.text == "<>") return ComparisonOperator::NotEqual;
    if (token.text == "<") return ComparisonOperator::Less;
    if (token.text == "<=") return ComparisonOperator::LessOrEqual;
    if (token.text == ">") return ComparisonOperator::Greater;
    if (token.text == ">=") return ComparisonOperator::GreaterOrEqual;
    return std::nullopt;
}

ExpressionPtr MakeArithmetic(Position at, ArithmeticOperator op, ExpressionPtr left, ExpressionPtr right) {
    return MakeExpression(at, Arithmetic{op, std::move(left), std::move(right)});
}

/// What stands between two # in the stored form; empty when it is no date. A bare number is none here.
std::string StoredDate(const std::string& text) {
    if (text.find_first_of("-/.:") == std::string::npos) return {};
    const auto moment = ReadDate(Value(text));
    return moment ? DateText(*moment) : std::string();
}

} // namespace

ExpressionPtr ExpressionParser::expression() {
    const Nesting nesting(*this);
    return equivalence();
}

ExpressionPtr ExpressionParser::logicalChain(LogicalOperator op, std::string_view word, Level below) {
    const Position at = current().at;
    ExpressionPtr left = (this->*below)();
    if (!isWord(word)) return left;
    Logical chain{op, {}};
    chain.operands.push_back(std::move(left));
    while (takeWord(word)) {
        if (op == LogicalOperator::Xor) countChained();
        chain.operands.push_back((this->*below)());
    }
    return MakeExpression(at, std::move(chain));
}

ExpressionPtr ExpressionParser::equivalence() {
    const Position at = current().at;
    ExpressionPtr left = exclusiveOr();
    while (isWord("eqv") || isWord("imp")) {
        const auto [op, word] =
            isWord("eqv") ? std::pair{LogicalOperator::Eqv, "eqv"} : std::pair{LogicalOperator::Imp, "imp"};
        Logical chain{op, {}};
        chain.operands.push_back(std::move(left));
        while (takeWord(word)) {
            countChained();
            chain.operands.push_back(exclusiveOr());
        }
        left = MakeExpression(at, std::move(chain));
    }
    return left;
}

ExpressionPtr ExpressionParser::exclusiveOr() {
    return logicalChain(LogicalOperator::Xor, "xor", &ExpressionParser::disjunction);
}

ExpressionPtr ExpressionParser::disjunction() {
    return logicalChain(LogicalOperator::Or, "or", &ExpressionParser::conjunction);
}

ExpressionPtr ExpressionParser::conjunction() {
    return logicalChain(LogicalOperator::And, "and", &ExpressionParser::negation);
}

ExpressionPtr ExpressionParser::negation() {
    const Position at = current().at;
    if (!takeWord("not")) return comparison();
    const Nesting nesting(*this);
    return MakeExpression(at, Not{negation()});
}

ExpressionPtr ExpressionParser::comparison() {
    ExpressionPtr left = concatenation();
    for (int tests = 0;; ++tests) {
        if (tests > 1) countChained();
        const Position at = current().at;
        if (const auto op = ComparisonOf(current())) {
            next();
            left = compared(at, *op, std::move(left));
        } else if (isWord("between") || isWord("like") || isWord("in") || isWord("is") || isWord("not")) {
            left = predicate(std::move(left));
        } else {
            return left;
        }
    }
}

// Here and below, what may throw is read into a variable before the node is made. When it throws within the braces of a
// node, in a conditional expression, g++ 12 destroys the operands made so far after their lifetime has ended.
ExpressionPtr ExpressionParser::compared(Position at, ComparisonOperator op, ExpressionPtr left) {
    if (isWord("all") || isWord("any") || isWord("some")) return quantified(op, std::move(left));
    ExpressionPtr right = concatenation();
    return MakeExpression(at, Comparison{op, std::move(left), std::move(right)});
}

ExpressionPtr ExpressionParser::quantified(ComparisonOperator op, ExpressionPtr left) {
    const Position at = current().at;
    const bool all = isWord("all");
    next();
    expectSymbol("(");
    const Nesting nesting(*this);
    if (!isWord("select")) fail("Expected a query");
    auto inner = query();
    Quantified node{op, all, std::move(left), std::move(inner)};
    expectSymbol(")");
    return MakeExpression(at, std::move(node));
}

ExpressionPtr ExpressionParser::predicate(ExpressionPtr left) {
    const Position at = current().at;
    if (takeWord("is")) {
        const bool negated = takeWord("not");
        expectWord("null");
        return MakeExpression(at, IsNull{negated, std::move(left)});
    }
    const bool negated = takeWord("not");
    if (takeWord("between")) {
        ExpressionPtr low = concatenation();
        expectWord("and");
        ExpressionPtr high = concatenation();
        return MakeExpression(at, Between{negated, std::move(left), std::move(low), std::move(high)});
    }
    if (takeWord("like")) {
        ExpressionPtr pattern = concatenation();
        return MakeExpression(at, Like{negated, std::move(left), std::move(pattern)});
    }
    expectWord("in");
    return membership(std::move(left), negated);
}

ExpressionPtr ExpressionParser::membership(ExpressionPtr left, bool negated) {
    const Position at = current().at;
    expectSymbol("(");
    const Nesting nesting(*this);
    if (isWord("select")) {
        auto inner = query();
        InQuery node{negated, std::move(left), std::move(inner), {}};
        expectSymbol(")");
        return MakeExpression(at, std::move(node));
    }
    InList node{negated, std::move(left), {}, {}};
    if (current().kind == TokenKind::NumberList) {
        node.numbers = current().text;
        next();
        expectSymbol(")");
        return MakeExpression(at, std::move(node));
    }
    do
        node.values.push_back(expression());
    while (takeSymbol(","));
    expectSymbol(")");
    return MakeExpression(at, std::move(node));
}

ExpressionPtr ExpressionParser::concatenation() {
    ExpressionPtr left = sum();
    while (isSymbol("&")) {
        countChained();
        const Position at = current().at;
        next();
        left = MakeArithmetic(at, ArithmeticOperator::Concatenate, std::move(left), sum());
    }
    return left;
}

ExpressionPtr ExpressionParser::sum() {
    ExpressionPtr left = modulo();
    while (isSymbol("+") || isSymbol("-")) {
        countChained();
        const Position at = current().at;
        const auto op = isSymbol("+") ? ArithmeticOperator::Add : ArithmeticOperator::Subtract;
        next();
        left = MakeArithmetic(at, op, std::move(left), modulo());
    }
    return left;
}

ExpressionPtr ExpressionParser::modulo() {
    ExpressionPtr left = wholeDivision();
    while (isWord("mod")) {
        countChained();
        const Position at = current().at;
        next();
        left = MakeArithmetic(at, ArithmeticOperator::Modulo, std::move(left), wholeDivision());
    }
    return left;
}

ExpressionPtr ExpressionParser::wholeDivision() {
    ExpressionPtr left = product();
    while (isSymbol("\\")) {
        countChained();
        const Position at = current().at;
        next();
        left = MakeArithmetic(at, ArithmeticOperator::WholeDivide, std::move(left), product());
    }
    return left;
}

ExpressionPtr ExpressionParser::product() {
    ExpressionPtr left = sign();
    while (isSymbol("*") || isSymbol("/")) {
        countChained();
        const Position at = current().at;
        const auto op = isSymbol("*") ? ArithmeticOperator::Multiply : ArithmeticOperator::Divide;
        next();
        left = MakeArithmetic(at, op, std::move(left), sign());
    }
    return left;
}

ExpressionPtr ExpressionParser::sign() {
    const Position at = current().at;
    const Nesting nesting(*this);
    if (takeSymbol("-")) return MakeExpression(at, Negation{sign()});
    if (takeSymbol("+")) return sign();
    return power();
}

// The power binds tighter than the sign before it, and takes a sign of its own: -2 ^ 2 is -4, 2 ^ -1 is 0.5.
ExpressionPtr ExpressionParser::power() {
    ExpressionPtr left = primary();
    while (isSymbol("^")) {
        countChained();
        const Position at = current().at;
        next();
        ExpressionPtr right;
        if (takeSymbol("-"))
            right = MakeExpression(at, Negation{primary()});
        else
            right = primary();
        left = MakeArithmetic(at, ArithmeticOperator::Power, std::move(left), std::move(right));
    }
    return left;
}

ExpressionPtr ExpressionParser::primary() {
    const Token& token = current();
    const Position at = token.at;
    switch (token.kind) {
    case TokenKind::Number: {
        NumberLiteral literal{token.text};
        next();
        return MakeExpression(at, std::move(literal));
    }
    case TokenKind::Text: {
        TextLiteral literal{token.text};
        next();
        return MakeExpression(at, std::move(literal));
    }
    case TokenKind::Date: {
        DateLiteral literal{StoredDate(token.text)};
        if (literal.text.empty()) fail("This is no date");
        next();
        return MakeExpression(at, std::move(literal));
    }
    case TokenKind::Symbol: {
        if (!takeSymbol("(")) fail("Expected an expression");
        if (isWord("select")) {
            const Nesting nesting(*this);
            ScalarQuery scalar{query()};
            expectSymbol(")");
            return MakeExpression(at, std::move(scalar));
        }
        ExpressionPtr inner = expression();
        expectSymbol(")");
        return inner;
    }
    case TokenKind::BracketedName:
        return column();
    case TokenKind::Name:
        return wordPrimary();
    case TokenKind::NumberList:
    case TokenKind::End:
        break;
    }
    fail("Expected an expression");
}

ExpressionPtr ExpressionParser::wordPrimary() {
    const Position at = current().at;
    const bool called = ahead().kind == TokenKind::Symbol && ahead().text == "(";
    if (called && isWord("exists")) {
        next();
        expectSymbol("(");
        const Nesting nesting(*this);
        Exists node{query()};
        expectSymbol(")");
        return MakeExpression(at, std::move(node));
    }
    if (called && FindFunction(current().text)) {
        std::string name = current().text;
        next();
        return call(std::move(name), at);
    }
    if (called && isName()) fail("Undefined function '" + current().text + "'");
    if (takeWord("null")) return MakeExpression(at, NullLiteral{});
    const bool qualified = ahead().kind == TokenKind::Symbol && ahead().text == ".";
    if (!qualified) {
        if (isWord("true") || isWord("yes") || isWord("on")) {
            next();
            return MakeExpression(at, BooleanLiteral{true});
        }
        if (isWord("false") || isWord("no") || isWord("off")) {
            next();
            return MakeExpression(at, BooleanLiteral{false});
        }
    }
    return column();
}

ExpressionPtr ExpressionParser::call(std::string name, Position at) {
    const FunctionInfo& info = *FindFunction(name);
    Call node{LowerCased(info.name), false, false, {}};
    expectSymbol("(");
    if (takeSymbol("*")) {
        if (info.name != "count") FailAt(at, "Only Count takes *");
        node.star = true;
    } else if (!isSymbol(")")) {
        node.distinct = info.aggregate && takeWord("distinct");
        do
            node.arguments.push_back(expression());
        while (takeSymbol(","));
    }
    expectSymbol(")");
    const int count = static_cast<int>(node.arguments.size());
    if (!node.star && (count < info.leastArguments || count > info.mostArguments))
        FailAt(at, "Wrong number of arguments for function '" + name + "'");
    return MakeExpression(at, std::move(node));
}

ExpressionPtr ExpressionParser::column() {
    const Position at = current().at;
    ColumnName node;
    node.bracketed = current().kind == TokenKind::BracketedName;
    node.name = expectName("an expression");
    if (takeSymbol(".")) {
        node.table = std::move(node.name);
        node.bracketed = current().kind == TokenKind::BracketedName;
        // Behind the dot any word is a name, also one that is reserved elsewhere.
        if (current().kind != TokenKind::Name && current().kind != TokenKind::BracketedName)
            fail("Expected a field name");
        node.name = current().text;
        next();
    }
    return MakeExpression(at, std::move(node));
}

} // namespace jet
