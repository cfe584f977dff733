#pragma once

#include "jet/emit/Translator.h"
#include "jet/engine/LiveCatalogue.h"
#include "jet/engine/Sqlite.h"

#include <cstdint>
#include <list>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Keeps translated and compiled statements for the next time.
namespace jet {

/// An SQLite statement with the tables that it reads and writes ("l1.data"), in lower case.
struct PreparedStatement {
    Statement statement;
    std::set<std::string> reads;
    std::set<std::string> writes;
};

/// What a translation asked the catalogue about a name.
enum class Question { Table, Link, Image, Index };

/// A question that a translation asked the catalogue, and the answer: for a table or an image its stamp, for whether a
/// name is a link, or an index begins with a field, 1 or 0.
struct AskedTable {
    std::string name;
    std::size_t stamp = 0;
    Question question = Question::Table;
    std::string field = {}; ///< of a question about an index
};

/// Whether a statement may read column images.
enum class Way { Any, Plain };

/// A statement of the dialect that has been translated.
struct CachedStatement {
    std::string key; ///< the text, and the way before it
    std::string text;
    Way way = Way::Any;
    Translation translation;
    std::vector<AskedTable> asked; ///< the translation is good as long as these answers are
    unsigned version = 0;          ///< of the catalogue when the translation was last found good
    PreparedStatement prepared; ///< the last of the translation's texts; empty before its first run and while it runs
};

/// Translations by the text of their statements. When there are a thousand, the one used longest ago goes.
class StatementCache {
  public:
    explicit StatementCache(const LiveCatalogue& catalogue) : catalogue_(catalogue) {}

    /// The translation of a statement, made when there is none, or the tables that it names have changed. Valid until
    /// the next call.
    CachedStatement& Translated(std::string_view sql, Way way = Way::Any);
    /// A statement translated before, whether that is still good or not; nullptr when there is none.
    [[nodiscard]] CachedStatement* find(std::string_view sql, Way way = Way::Any) const;
    /// True when the catalogue would answer what the translation asked as it did then.
    [[nodiscard]] bool isGood(CachedStatement& statement) const;
    /// Keeps what was prepared for a query that has been read to its end for the next time.
    void GiveBack(std::string_view sql, Way way, PreparedStatement prepared);
    /// Statements are translated without this rewrite from now on. Throws SyntaxError for a name that none has.
    void LeaveOutStep(std::string_view name);

    struct Counts {
        std::uint64_t translated = 0;
        std::uint64_t reused = 0;
    };
    [[nodiscard]] Counts counts() const { return counts_; }

  private:
    void TranslateAnew(CachedStatement& statement);

    const LiveCatalogue& catalogue_;
    std::list<CachedStatement> statements_; ///< the one used last in front
    std::unordered_map<std::string_view, std::list<CachedStatement>::iterator> byText_;
    CachedStatement long_; ///< the last one that is too long to be kept
    LeftOutSteps leftOut_;
    Counts counts_;
};

} // namespace jet
