#include "jet/sql/Lexer.h"

#include "jet/values/Collation.h"
#include "jet/values/Error.h"
#include "jet/values/NumberList.h"

#include <algorithm>

namespace jet {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool StartsName(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool ContinuesName(char c) {
    return StartsName(c) || IsDigit(c) || c == '$';
}

class Lexer {
  public:
    explicit Lexer(std::string_view sql) : sql_(sql) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        tokens.reserve(std::min(sql_.size() / 4 + 2, kMostReserved));
        skipBlanks();
        while (next_ < sql_.size()) {
            const bool afterIn = !tokens.empty() && isIn(tokens.back());
            tokens.push_back(read());
            if (afterIn && tokens.back().kind == TokenKind::Symbol && tokens.back().text == "(") readList(tokens);
            skipBlanks();
        }
        tokens.push_back({TokenKind::End, {}, here()});
        return tokens;
    }

  private:
    static constexpr std::size_t kMostReserved = 4096;

    static bool isIn(const Token& token) {
        return token.kind == TokenKind::Name && token.text.size() == 2 && LowerAscii(token.text[0]) == 'i' &&
               LowerAscii(token.text[1]) == 'n';
    }

    // One token for the whole list, so that a million numbers make no million tokens.
    void readList(std::vector<Token>& tokens) {
        const std::size_t length = NumberListLength(sql_.substr(next_));
        if (length == 0) return;
        tokens.push_back({TokenKind::NumberList, std::string(sql_.substr(next_, length)), here()});
        const std::size_t end = next_ + length;
        while (next_ < end)
            advance();
    }

    [[nodiscard]] Position here() const { return {line_, static_cast<int>(next_ - lineStart_) + 1}; }
    [[nodiscard]] char peek(std::size_t ahead = 0) const {
        return next_ + ahead < sql_.size() ? sql_[next_ + ahead] : '\0';
    }

    void advance() {
        if (sql_[next_] == '\n') {
            ++line_;
            lineStart_ = next_ + 1;
        }
        ++next_;
    }

    void skipBlanks() {
        while (next_ < sql_.size() && IsBlank(sql_[next_]))
            advance();
    }

    Token read() {
        const char c = peek();
        if (StartsName(c)) return readName();
        if (IsDigit(c) || (c == '.' && IsDigit(peek(1)))) return readNumber();
        switch (c) {
        case '\'':
        case '"':
            return readQuoted(TokenKind::Text, c, "This text has no closing quote");
        case '[':
            return readQuoted(TokenKind::BracketedName, ']', "This name has no closing bracket");
        case '`':
            return readQuoted(TokenKind::BracketedName, c, "This name has no closing quote");
        case '#':
            return readQuoted(TokenKind::Date, c, "This date has no closing #");
        default:
            return readSymbol();
        }
    }

    Token readName() {
        Token token{TokenKind::Name, {}, here()};
        const std::size_t start = next_;
        while (next_ < sql_.size() && ContinuesName(sql_[next_]))
            ++next_;
        token.text = sql_.substr(start, next_ - start);
        return token;
    }

    Token readNumber() {
        Token token{TokenKind::Number, {}, here()};
        const std::size_t start = next_;
        while (IsDigit(peek()))
            ++next_;
        if (peek() == '.') {
            ++next_;
            while (IsDigit(peek()))
                ++next_;
        }
        const std::size_t sign = peek(1) == '+' || peek(1) == '-' ? 2 : 1;
        if ((peek() == 'e' || peek() == 'E') && IsDigit(peek(sign))) {
            next_ += sign;
            while (IsDigit(peek()))
                ++next_;
        }
        token.text = sql_.substr(start, next_ - start);
        return token;
    }

    // A doubled closing quote stands for one; the closing bracket of a name can't be written.
    Token readQuoted(TokenKind kind, char close, const char* complaint) {
        Token token{kind, {}, here()};
        advance();
        while (next_ < sql_.size()) {
            const char c = sql_[next_];
            if (c == '\0') break;
            if (c == close && (kind != TokenKind::Text || peek(1) != close)) {
                ++next_;
                return token;
            }
            if (c == close) ++next_;
            token.text += c;
            advance();
        }
        FailAt(token.at, complaint);
    }

    Token readSymbol() {
        Token token{TokenKind::Symbol, {}, here()};
        const std::string_view pair = sql_.substr(next_, 2);
        if (pair == "<=" || pair == ">=" || pair == "<>") {
            token.text = pair;
        } else if (pair == "!=") {
            token.text = "<>";
        } else if (std::string_view("(),;.*=<>+-/\\^&!").find(peek()) != std::string_view::npos) {
            token.text = peek() == '!' ? '.' : peek(); // Table!Column is Table.Column
        } else {
            FailAt(token.at, "This character has no meaning in a statement");
        }
        next_ += pair == "!=" ? 2 : token.text.size();
        return token;
    }

    std::string_view sql_;
    std::size_t next_ = 0;
    std::size_t lineStart_ = 0;
    int line_ = 1;
};

} // namespace

std::vector<Token> Tokenize(std::string_view sql) {
    return Lexer(sql).run();
}

void FailAt(Position at, const std::string& what) {
    throw Error(ErrorNumber::SyntaxError,
                what + " (line " + std::to_string(at.line) + ", column " + std::to_string(at.column) + ").");
}

} // namespace jet
