#include "calculate/FormulaParser.h"

#include "calculate/FormulaTokens.h"
#include "session/Messages.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tessaro {

namespace {

using Kind = FormulaToken::Kind;
using Node = FormulaNode;

constexpr int kDeepest = 200; ///< brackets and signs within one another
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// A function, and what sheets call it.
struct Function {
    const char* name;
    const char* sheetName;
    double (*compute)(double);
};
constexpr Function kFunctions[] = {
    {"abs", "ABS", [](double x) { return std::fabs(x); }},
    {"exp", "EXP", [](double x) { return std::exp(x); }},
    {"int", "INT", [](double x) { return std::floor(x); }},
    {"log", "LN", [](double x) { return x > 0 ? std::log(x) : kNone; }},
    {"sqr", "SQRT", [](double x) { return x >= 0 ? std::sqrt(x) : kNone; }},
};

double Computed(char op, double a, double b) {
    switch (op) {
    case '+':
        return a + b;
    case '-':
        return a - b;
    case '*':
        return a * b;
    case '/':
        return a / b;
    default:
        return std::pow(a, b);
    }
}

bool DividesByZero(char op, double a, double b) {
    return (op == '/' && b == 0) || (op == '^' && a == 0 && b < 0);
}

} // namespace

/// Recursive descent: one method a level of precedence.
class FormulaParser final {
  public:
    FormulaParser(std::vector<FormulaToken> tokens, const std::vector<CalculationItem>& known, FormulaFault& fault)
        : tokens_(std::move(tokens)), known_(known), fault_(fault) {}

    bool ParseInto(ParsedFormula& formula) {
        formula_ = &formula;
        if (Sum() < 0) return false;
        if (Here().kind != Kind::End) {
            Fail(Here().kind == Kind::Close ? "TS_FormulaNotOpened" : "TS_FormulaOperator", Here());
            return false;
        }
        return true;
    }

  private:
    [[nodiscard]] const FormulaToken& Here() const { return tokens_[at_]; }
    [[nodiscard]] bool IsOperator(const char* signs) const {
        return Here().kind == Kind::Operator && QLatin1String(signs).contains(Here().sign);
    }

    int Fail(const char* key, const FormulaToken& token) {
        const QString shown = formula_->text_.mid(token.from, token.to - token.from);
        fault_ = {FilledText(QLatin1String(key), {shown}), token.from, token.to - token.from};
        return -1;
    }

    int Add(Node node) {
        formula_->nodes_.push_back(node);
        return static_cast<int>(formula_->nodes_.size()) - 1;
    }
    [[nodiscard]] const Node& At(int node) const { return formula_->nodes_[static_cast<std::size_t>(node)]; }

    int Binary(char op, int left, int right) {
        return Add({Node::Kind::Binary, op, left, right, 0, 0, At(left).from, At(right).to});
    }

    /// A row of operands of the next level, taken from the left.
    template <class Operand> int Row(const char* signs, const Operand& operand) {
        int left = operand();
        while (left >= 0 && IsOperator(signs)) {
            const char op = Here().sign.toLatin1();
            ++at_;
            const int right = operand();
            left = right < 0 ? -1 : Binary(op, left, right);
        }
        return left;
    }

    int Sum() {
        return Row("+-", [&] { return Product(); });
    }
    int Product() {
        return Row("*/", [&] { return Signed(); });
    }

    int Signed() {
        return WithSign([&] { return Power(); });
    }
    int Power() {
        int left = Primary();
        while (left >= 0 && IsOperator("^")) {
            ++at_;
            const int right = WithSign([&] { return Primary(); });
            left = right < 0 ? -1 : Binary('^', left, right);
            bracketed_ = false;
        }
        return left;
    }

    /// An operand behind any number of signs.
    template <class Operand> int WithSign(const Operand& operand) {
        std::vector<int> negations;
        for (; IsOperator("+-"); ++at_)
            if (Here().sign == QLatin1Char('-')) negations.push_back(Here().from);
        int node = operand();
        if (node < 0 || negations.empty()) return node;
        // A sheet takes the sign before the power.
        if (At(node).kind == Node::Kind::Binary && !bracketed_) Bracket(At(node).from, At(node).to);
        for (auto from = negations.rbegin(); from != negations.rend(); ++from)
            node = Add({Node::Kind::Negation, 0, node, -1, 0, 0, *from, At(node).to});
        bracketed_ = false;
        return node;
    }

    void Bracket(int from, int to) {
        formula_->substitutes_.push_back({from, from, QStringLiteral("("), -1});
        formula_->substitutes_.push_back({to, to, QStringLiteral(")"), -1});
    }

    int Primary() {
        const FormulaToken token = Here();
        bracketed_ = false;
        switch (token.kind) {
        case Kind::Number:
            ++at_;
            formula_->substitutes_.push_back({token.from, token.to, token.text, -1});
            return Add({Node::Kind::Number, 0, -1, -1, token.number, 0, token.from, token.to});
        case Kind::Reference:
            ++at_;
            return Reference(token);
        case Kind::Word:
            return Call();
        case Kind::Open:
            return InBrackets();
        default:
            return Fail("TS_FormulaOperand", token);
        }
    }

    int Reference(const FormulaToken& token) {
        const CalculationItem& item = known_[static_cast<std::size_t>(token.item)];
        auto& references = formula_->references_;
        const auto place = std::ranges::find(references, item);
        const int index = static_cast<int>(place - references.begin());
        if (place == references.end()) references.push_back(item);
        formula_->substitutes_.push_back({token.from, token.to, {}, index});
        return Add({Node::Kind::Reference, 0, -1, -1, 0, index, token.from, token.to});
    }

    int Call() {
        const FormulaToken word = Here();
        const auto* function = std::ranges::find_if(
            kFunctions, [&](const Function& each) { return word.text == QLatin1String(each.name); });
        if (function == std::end(kFunctions)) return Fail("TS_FormulaUnknownWord", word);
        formula_->substitutes_.push_back({word.from, word.to, QLatin1String(function->sheetName), -1});
        ++at_;
        if (Here().kind != Kind::Open) return Fail("TS_FormulaOperand", Here());
        const int argument = InBrackets();
        if (argument < 0) return -1;
        const int index = static_cast<int>(function - std::begin(kFunctions));
        return Add({Node::Kind::Function, 0, argument, -1, 0, index, word.from, At(argument).to});
    }

    int InBrackets() {
        const FormulaToken open = Here();
        if (++depth_ > kDeepest) return Fail("TS_FormulaDeep", open);
        ++at_;
        const int inner = Sum();
        if (inner < 0) return -1;
        const FormulaToken close = Here();
        const QChar wanted = QLatin1Char(open.sign == QLatin1Char('{') ? '}' : ')');
        if (close.kind == Kind::End) return Fail("TS_FormulaNotClosed", open);
        if (close.kind != Kind::Close) return Fail("TS_FormulaOperator", close);
        if (close.sign != wanted) return Fail("TS_FormulaNotOpened", close);
        ++at_;
        --depth_;
        formula_->substitutes_.push_back({open.from, open.to, QStringLiteral("("), -1});
        formula_->substitutes_.push_back({close.from, close.to, QStringLiteral(")"), -1});
        Node& node = formula_->nodes_[static_cast<std::size_t>(inner)];
        node.from = open.from;
        node.to = close.to;
        bracketed_ = true;
        return inner;
    }

    std::vector<FormulaToken> tokens_;
    const std::vector<CalculationItem>& known_;
    FormulaFault& fault_;
    ParsedFormula* formula_ = nullptr;
    std::size_t at_ = 0;
    int depth_ = 0;
    bool bracketed_ = false; ///< what was read last stands in brackets already
};

std::optional<ParsedFormula> ParsedFormula::Parse(const QString& text, const std::vector<CalculationItem>& known,
                                                  Braces braces, FormulaFault& fault) {
    std::vector<FormulaToken> tokens = FormulaTokens(text, known, fault);
    if (tokens.empty()) return std::nullopt;
    if (braces == Braces::ArePassedOver)
        std::erase_if(tokens, [](const FormulaToken& token) {
            return token.sign == QLatin1Char('{') || token.sign == QLatin1Char('}');
        });
    ParsedFormula formula;
    formula.text_ = text;
    if (!FormulaParser(std::move(tokens), known, fault).ParseInto(formula)) return std::nullopt;
    // A bracket that is put in stands before what begins at the same place.
    std::ranges::stable_sort(formula.substitutes_, {},
                             [](const Substitute& part) { return std::pair(part.from, part.to); });
    return formula;
}

FormulaValue ParsedFormula::Evaluate(const std::vector<std::optional<double>>& values) const {
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!values[i]) return {std::nullopt, "TS_CalcMissing", static_cast<int>(i)};
    std::vector<double> computed;
    computed.reserve(nodes_.size());
    const auto of = [&](int node) { return computed[static_cast<std::size_t>(node)]; };
    for (const FormulaNode& node : nodes_) {
        switch (node.kind) {
        case FormulaNode::Kind::Number:
            computed.push_back(node.number);
            break;
        case FormulaNode::Kind::Reference:
            computed.push_back(*values[static_cast<std::size_t>(node.index)]);
            break;
        case FormulaNode::Kind::Negation:
            computed.push_back(-of(node.left));
            break;
        case FormulaNode::Kind::Function:
            computed.push_back(kFunctions[node.index].compute(of(node.left)));
            break;
        case FormulaNode::Kind::Binary:
            if (DividesByZero(node.op, of(node.left), of(node.right))) return {std::nullopt, "TS_CalcDivision", -1};
            computed.push_back(Computed(node.op, of(node.left), of(node.right)));
            break;
        }
        if (std::isnan(computed.back())) return {std::nullopt, "TS_CalcNoNumber", -1};
        if (std::isinf(computed.back())) return {std::nullopt, "TS_CalcTooLarge", -1};
    }
    return {computed.back() + 0.0, nullptr, -1}; // no negative zero
}

QString ParsedFormula::SheetFormula(const QStringList& addresses) const {
    QString sheet = QStringLiteral("= ");
    int at = 0;
    for (const Substitute& part : substitutes_) {
        sheet += QStringView(text_).mid(at, part.from - at);
        sheet += part.reference >= 0 ? addresses[part.reference] : part.text;
        at = std::max(at, part.to);
    }
    return (sheet + text_.mid(at)).trimmed();
}

} // namespace tessaro
