#include "jet/engine/StatementCache.h"

#include "jet/rewrite/Rewrites.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <utility>

namespace jet {

namespace {

constexpr std::size_t kMostKept = 1000;
constexpr std::size_t kLongestKept = 64 * 1024;

/// The catalogue, with a note of every table that it is asked for.
class NotingCatalogue final : public Catalogue {
  public:
    explicit NotingCatalogue(const LiveCatalogue& catalogue) : catalogue_(catalogue) {}

    [[nodiscard]] const TableInfo* find(std::string_view name) const override {
        const TableInfo* const found = catalogue_.find(name);
        const auto asked = [&](const AskedTable& each) { return each.name == name && !each.whetherLink; };
        if (std::ranges::none_of(asked_, asked))
            asked_.push_back({std::string(name), found == nullptr ? 0 : catalogue_.stamp(name), false});
        return found;
    }
    [[nodiscard]] bool isLink(std::string_view name) const override {
        const bool link = catalogue_.isLink(name);
        asked_.push_back({std::string(name), link ? 1U : 0U, true});
        return link;
    }
    [[nodiscard]] unsigned version() const override { return catalogue_.version(); }
    [[nodiscard]] std::int64_t rowsOnRecord(const TableInfo& table) const override {
        return catalogue_.rowsOnRecord(table);
    }
    [[nodiscard]] const std::vector<AskedTable>& asked() const { return asked_; }

  private:
    const LiveCatalogue& catalogue_;
    mutable std::vector<AskedTable> asked_;
};

} // namespace

CachedStatement& StatementCache::Translated(std::string_view sql) {
    const auto found = byText_.find(sql);
    if (found != byText_.end()) {
        statements_.splice(statements_.begin(), statements_, found->second);
        CachedStatement& statement = *found->second;
        if (isGood(statement))
            ++counts_.reused;
        else
            TranslateAnew(statement);
        return statement;
    }
    CachedStatement made;
    made.text = sql;
    TranslateAnew(made);
    if (sql.size() > kLongestKept) return long_ = std::move(made);
    if (statements_.size() >= kMostKept) {
        byText_.erase(statements_.back().text);
        statements_.pop_back();
    }
    statements_.push_front(std::move(made));
    byText_[statements_.front().text] = statements_.begin();
    return statements_.front();
}

CachedStatement* StatementCache::find(std::string_view sql) const {
    const auto found = byText_.find(sql);
    return found == byText_.end() ? nullptr : &*found->second;
}

void StatementCache::TranslateAnew(CachedStatement& statement) {
    const NotingCatalogue noting(catalogue_);
    statement.translation = Translate(statement.text, noting, leftOut_);
    statement.asked = noting.asked();
    statement.version = catalogue_.version();
    statement.prepared = {};
    ++counts_.translated;
}

// A filter drops its working tables and makes them again with the same fields, so translations for them stay valid.
bool StatementCache::isGood(CachedStatement& statement) const {
    if (statement.version == catalogue_.version()) return true;
    const bool same = std::ranges::all_of(statement.asked, [&](const AskedTable& each) {
        if (each.whetherLink) return catalogue_.isLink(each.name) == (each.stamp != 0);
        return catalogue_.stamp(each.name) == each.stamp;
    });
    if (same) statement.version = catalogue_.version();
    return same;
}

void StatementCache::GiveBack(std::string_view sql, PreparedStatement prepared) {
    sqlite3_reset(prepared.statement.get());
    CachedStatement* const statement = find(sql);
    if (statement != nullptr && statement->version == catalogue_.version() && statement->prepared.statement == nullptr)
        statement->prepared = std::move(prepared);
}

void StatementCache::LeaveOutStep(std::string_view name) {
    if (std::ranges::find(Rewrites(), name, &Rewrite::name) == Rewrites().end())
        throw Error(ErrorNumber::SyntaxError, "There is no step '" + std::string(name) + "'.");
    leftOut_.emplace(name);
    byText_.clear();
    statements_.clear();
}

} // namespace jet
