#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Cuts statements into tokens.
namespace jet {

/// Where a token begins, both counted from 1; columns count bytes.
struct Position {
    int line = 1;
    int column = 1;
};

enum class TokenKind {
    Name,          ///< a bare word; it may be a keyword
    BracketedName, ///< [name] or `name`: never a keyword
    Text,          ///< '…' or "…", with doubled quotes undone
    Number,        ///< as written: 12, 0.25, .5, 1e-3
    Date,          ///< what stands between two #
    Symbol,        ///< one of ( ) , ; . * = < > <= >= <> + - / \ ^ &
    NumberList,    ///< what stands between the brackets of IN (1, 2, -3), as written
    End,
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::string text;
    Position at;
};

/// Cuts a statement into tokens; the last one is End. Throws SyntaxError on an unterminated text, name or date, on a
/// byte 0 and on characters that the dialect has no use for.
[[nodiscard]] std::vector<Token> Tokenize(std::string_view sql);

/// Throws SyntaxError: `what`, then the line and column.
[[noreturn]] void FailAt(Position at, const std::string& what);

} // namespace jet
