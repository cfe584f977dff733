#include "jet/engine/Guard.h"

#include "jet/engine/OpenError.h"
#include "jet/engine/Sqlite.h"
#include "jet/values/Catalogue.h"
#include "jet/values/Collation.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sys/stat.h>
#include <unordered_set>
#include <utility>

namespace jet {

namespace {

constexpr std::array kSettings = {
    std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},      std::pair{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
    std::pair{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0}, std::pair{SQLITE_DBCONFIG_ENABLE_VIEW, 0},
    std::pair{SQLITE_DBCONFIG_ENABLE_FKEY, 0},    std::pair{SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
};

/// Bytes that the engine takes for all connections together; a statement or a schema that wants more fails.
constexpr sqlite3_int64 kMostMemory = 768LL * 1024 * 1024;

// The length of a statement is left alone: lists of ids are long.
constexpr std::array kLimits = {
    std::pair{SQLITE_LIMIT_LENGTH, kLongestValue},
    std::pair{SQLITE_LIMIT_VDBE_OP, 5'000'000},
    std::pair{SQLITE_LIMIT_TRIGGER_DEPTH, 1},
    std::pair{SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 1000},
};

enum class Kind { Word, Name, Text, Number, Symbol };

struct Token {
    Kind kind = Kind::Symbol;
    std::string_view text;
};

bool IsWordByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}

/// Cuts the text of a schema entry into words, names and symbols, as far as is needed to find what computes.
class SchemaText {
  public:
    explicit SchemaText(std::string_view text) : rest_(text) {}

    /// False at the end.
    bool next(Token& token) {
        skipBlanks();
        if (rest_.empty()) return false;
        const char c = rest_.front();
        if (c == '\'' || c == '"' || c == '`' || c == '[') {
            token = {c == '\'' ? Kind::Text : Kind::Name, quoted(c == '[' ? ']' : c)};
        } else if (IsWordByte(c)) {
            const auto end = std::ranges::find_if_not(rest_, IsWordByte);
            const auto length = static_cast<std::size_t>(end - rest_.begin());
            token = {c >= '0' && c <= '9' ? Kind::Number : Kind::Word, rest_.substr(0, length)};
        } else {
            const bool pair = rest_.starts_with("||") || rest_.starts_with("->");
            token = {Kind::Symbol, rest_.substr(0, pair ? 2 : 1)};
        }
        rest_.remove_prefix(token.text.size());
        return true;
    }

  private:
    void skipBlanks() {
        for (;;) {
            rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n\f"), rest_.size()));
            std::string_view end;
            if (rest_.starts_with("\xef\xbb\xbf")) { // a byte order mark is a blank for SQLite
                rest_.remove_prefix(3);
                continue;
            }
            if (rest_.starts_with("--")) end = "\n";
            if (rest_.starts_with("/*")) end = "*/";
            if (end.empty()) return;
            const std::size_t at = rest_.find(end, 2);
            rest_.remove_prefix(at == std::string_view::npos ? rest_.size() : at + end.size());
        }
    }

    [[nodiscard]] std::string_view quoted(char close) const {
        for (std::size_t at = 1; at < rest_.size(); ++at) {
            if (rest_[at] != close) continue;
            if (close == ']' || at + 1 >= rest_.size() || rest_[at + 1] != close) return rest_.substr(0, at + 1);
            ++at; // a doubled mark stands for one
        }
        return rest_;
    }

    std::string_view rest_;
};

/// `word` is in lower case.
bool IsWord(std::string_view word, std::string_view text) {
    return word.size() == text.size() &&
           std::ranges::equal(word, text, [](char a, char b) { return a == LowerAscii(b); });
}

template <std::size_t count> bool IsOneOf(const std::array<std::string_view, count>& words, const Token& token) {
    return token.kind == Kind::Word &&
           std::ranges::any_of(words, [&](std::string_view word) { return IsWord(word, token.text); });
}

// Words that may come before a bracket: keywords, and functions whose results are short.
constexpr std::array<std::string_view, 17> kBeforeBracket = {"and",  "or",     "not",    "in",     "between", "check",
                                                             "when", "then",   "else",   "key",    "unique",  "default",
                                                             "is",   "length", "typeof", "exists", "null"};
constexpr std::array<std::string_view, 5> kSearching = {"like", "glob", "regexp", "match", "select"};

/// What a part of the schema computes, and the function that it calls, if any; empty when it is harmless.
struct Computing {
    OpenFailure what = OpenFailure::Other;
    std::string function;
};
using Found = std::optional<Computing>;

/// What a condition or a default computes, other than comparisons and arithmetic on the fields of its row.
Found Effort(const Token& before, const Token& token) {
    if (token.text == "||" || token.text == "->") return Computing{OpenFailure::MakesTexts, {}};
    if (IsOneOf(kSearching, token)) return Computing{OpenFailure::SearchesTexts, {}};
    const bool named = before.kind == Kind::Word || before.kind == Kind::Name;
    if (token.text == "(" && named && !IsOneOf(kBeforeBracket, before))
        return Computing{OpenFailure::CallsFunction, std::string(before.text)};
    return {};
}

/// Reads on behind CHECK, DEFAULT or WHERE to the end of its brackets or of the text.
Found EffortOf(SchemaText& text, Token before, bool bracketsOnly) {
    int depth = 0;
    for (Token token; text.next(token); before = token) {
        if (Found effort = Effort(before, token)) return effort;
        if (token.text == "(") ++depth;
        if (token.text == ")") --depth;
        if (bracketsOnly && depth <= 0) return {};
    }
    return {};
}

Found ComputedInTable(SchemaText& text) {
    constexpr std::array<std::string_view, 2> kConditions = {"check", "default"};
    for (Token token; text.next(token);) {
        if (IsOneOf<1>({"as"}, token)) return Computing{OpenFailure::ComputedField, {}};
        if (!IsOneOf(kConditions, token)) continue;
        if (Found effort = EffortOf(text, token, true)) return effort;
    }
    return {};
}

/// In an index everything behind the table's name can compute.
Found ComputedInIndex(SchemaText& text) {
    for (Token token; text.next(token);) {
        if (!IsOneOf<1>({"on"}, token)) continue;
        text.next(token);
        text.next(token); // the bracket of the fields
        return EffortOf(text, token, false);
    }
    return {};
}

/// The end of a journal: the length of the name of a further file, its checksum and eight fixed bytes.
bool NamesFurtherFile(const std::string& journal) {
    constexpr std::streamoff kTailBytes = 16;
    constexpr std::string_view kMark = "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
    std::ifstream file(journal, std::ios::binary);
    std::array<char, kTailBytes> tail{};
    if (!file.seekg(-kTailBytes, std::ios::end) || !file.read(tail.data(), kTailBytes)) return false;
    const std::string_view read(tail.data(), tail.size());
    return read.substr(8) == kMark && read.substr(0, 4).find_first_not_of('\0') != std::string_view::npos;
}

/// What in the schema text of a table or index ("CREATE TABLE ...") has the engine compute more than a simple
/// comparison.
Found ComputedPart(std::string_view schemaText) {
    SchemaText text(schemaText);
    for (Token token; text.next(token);) {
        if (IsOneOf<1>({"index"}, token)) return ComputedInIndex(text);
        if (IsOneOf<1>({"table"}, token)) return ComputedInTable(text);
        if (IsOneOf<3>({"view", "trigger", "virtual"}, token)) return {}; // never used: Harden switches them off
    }
    return {};
}

} // namespace

void Harden(sqlite3* database) {
    for (const auto& [setting, value] : kSettings)
        sqlite3_db_config(database, setting, value, nullptr);
    for (const auto& [limit, most] : kLimits)
        sqlite3_limit(database, limit, most);
    sqlite3_hard_heap_limit64(kMostMemory);
    std::array<const char*, 2> kept = {"json_each", nullptr}; // needed for lists in IN
    sqlite3_drop_modules(database, kept.data());
}

void RefuseComputedParts(sqlite3* database, const std::string& schema, const std::string& path) {
    // Texts that compute nothing are remembered: all databases of the program have the same tables.
    constexpr std::size_t kMostHarmless = 1000;
    thread_local std::unordered_set<std::string> harmless;
    for (const auto& row :
         Rows(database, "SELECT tbl_name, sql FROM " + schema + ".sqlite_master WHERE sql IS NOT NULL")) {
        std::string sql = row[1].toText();
        if (harmless.contains(sql)) continue;
        const Found part = ComputedPart(sql);
        if (part) throw OpenError(path, part->what, {row[0].toText(), part->function});
        if (harmless.size() < kMostHarmless) harmless.insert(std::move(sql));
    }
}

void RefuseReachingOut(const std::string& path) {
    std::error_code failure;
    const std::filesystem::path real =
        std::filesystem::canonical(path, failure); // SQLite looks for the journal beside the real file
    const std::string base = failure ? path : real.string();
    for (const char* const ending : {"-journal", "-wal", "-shm"}) {
        const std::string companion = base + ending;
        struct stat found {};
        if (::lstat(companion.c_str(), &found) != 0) continue;
        if (!S_ISREG(found.st_mode)) throw OpenError(path, OpenFailure::NoPlainFileBeside, {companion});
        if (std::string_view(ending) == "-journal" && NamesFurtherFile(companion))
            throw OpenError(path, OpenFailure::JournalNamesAnother, {companion});
    }
}

} // namespace jet
