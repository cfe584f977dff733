#pragma once

#include "jet/sql/Tree.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jet {

/// The tokens of a statement and the current position: the questions that all levels of the grammar ask of them.
class ParserBase {
  public:
    explicit ParserBase(std::string_view sql) : tokens_(Tokenize(sql)) {}

  protected:
    [[nodiscard]] const Token& current() const { return tokens_[at_]; }
    [[nodiscard]] const Token& ahead(std::size_t count = 1) const;
    [[nodiscard]] bool isWord(std::string_view word) const { return isWord(current(), word); }
    [[nodiscard]] static bool isWord(const Token& token, std::string_view word);
    [[nodiscard]] bool isSymbol(std::string_view symbol) const;
    [[nodiscard]] bool isName() const;

    void next() { at_ += at_ + 1 < tokens_.size() ? 1 : 0; }
    bool takeWord(std::string_view word);
    bool takeSymbol(std::string_view symbol);
    void expectWord(std::string_view word);
    void expectSymbol(std::string_view symbol);
    /// A name in brackets, or a bare word that is no keyword of the clauses.
    std::string expectName(const char* what);
    [[noreturn]] void fail(const std::string& what) const { FailAt(current().at, what); }

    /// Counts the depth of nested brackets and queries.
    class Nesting {
      public:
        explicit Nesting(ParserBase& parser);
        ~Nesting() { --parser_.depth_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

      private:
        ParserBase& parser_;
    };

    /// A chain of operators makes a tree as deep as the chain is long; this bounds its length.
    void countChained();

  private:
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    int depth_ = 0;
    int chained_ = 0;
};

/// Expressions, one method a level of precedence.
class ExpressionParser : public ParserBase {
  public:
    using ParserBase::ParserBase;

  protected:
    ~ExpressionParser() = default;
    tree::ExpressionPtr expression();
    tree::ExpressionPtr concatenation();
    tree::ExpressionPtr sign();
    virtual tree::QueryPtr query() = 0;

  private:
    using Level = tree::ExpressionPtr (ExpressionParser::*)();
    tree::ExpressionPtr logicalChain(tree::LogicalOperator op, std::string_view word, Level below);
    tree::ExpressionPtr equivalence();
    tree::ExpressionPtr exclusiveOr();
    tree::ExpressionPtr disjunction();
    tree::ExpressionPtr conjunction();
    tree::ExpressionPtr negation();
    tree::ExpressionPtr comparison();
    tree::ExpressionPtr predicate(tree::ExpressionPtr left);
    tree::ExpressionPtr compared(Position at, tree::ComparisonOperator op, tree::ExpressionPtr left);
    tree::ExpressionPtr quantified(tree::ComparisonOperator op, tree::ExpressionPtr left);
    tree::ExpressionPtr membership(tree::ExpressionPtr left, bool negated);
    tree::ExpressionPtr sum();
    tree::ExpressionPtr modulo();
    tree::ExpressionPtr wholeDivision();
    tree::ExpressionPtr product();
    tree::ExpressionPtr power();
    tree::ExpressionPtr primary();
    tree::ExpressionPtr wordPrimary();
    tree::ExpressionPtr call(std::string name, Position at);
    tree::ExpressionPtr column();
};

} // namespace jet
