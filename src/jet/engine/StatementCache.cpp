#include "jet/engine/StatementCache.h"

#include "jet/rewrite/Rewrites.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <map>
#include <utility>

namespace jet {

namespace {

constexpr std::size_t kMostKept = 1000;
constexpr std::size_t kLongestKept = 64 * 1024;

std::string KeyOf(std::string_view sql, Way way) {
    return (way == Way::Plain ? "\1" : "") + std::string(sql);
}

/// The catalogue, with a note of every table that it is asked for.
class NotingCatalogue final : public Catalogue {
  public:
    explicit NotingCatalogue(const LiveCatalogue& catalogue) : catalogue_(catalogue) {}

    [[nodiscard]] const TableInfo* find(std::string_view name) const override {
        const TableInfo* const found = catalogue_.find(name);
        Note(name, found == nullptr ? 0 : catalogue_.stamp(name), Question::Table);
        return found;
    }
    [[nodiscard]] bool isLink(std::string_view name) const override {
        const bool link = catalogue_.isLink(name);
        Note(name, link ? 1U : 0U, Question::Link);
        return link;
    }
    [[nodiscard]] unsigned version() const override { return catalogue_.version(); }
    [[nodiscard]] std::int64_t rowsOnRecord(const TableInfo& table) const override {
        return catalogue_.rowsOnRecord(table);
    }
    [[nodiscard]] std::shared_ptr<const ColumnImage> image(const TableInfo& table) const override {
        const auto [known, isNew] = images_.try_emplace(table.name);
        if (!isNew) return known->second; // each step of the rewriting asks, and must get the same
        known->second = catalogue_.image(table);
        Note(table.name, std::hash<std::shared_ptr<const ColumnImage>>{}(known->second), Question::Image);
        return known->second;
    }
    [[nodiscard]] bool leadsIndex(const TableInfo& table, const std::string& field) const override {
        const bool leads = catalogue_.leadsIndex(table, field);
        asked_.push_back({table.name, leads ? 1U : 0U, Question::Index, field});
        return leads;
    }
    [[nodiscard]] const std::vector<AskedTable>& asked() const { return asked_; }

  private:
    void Note(std::string_view name, std::size_t stamp, Question question) const {
        const auto asked = [&](const AskedTable& each) { return each.name == name && each.question == question; };
        if (std::ranges::none_of(asked_, asked)) asked_.push_back({std::string(name), stamp, question});
    }

    const LiveCatalogue& catalogue_;
    mutable std::vector<AskedTable> asked_;
    mutable std::map<std::string, std::shared_ptr<const ColumnImage>> images_; ///< by table
};

} // namespace

CachedStatement& StatementCache::Translated(std::string_view sql, Way way) {
    if (CachedStatement* const statement = find(sql, way)) {
        statements_.splice(statements_.begin(), statements_, byText_.find(statement->key)->second);
        if (isGood(*statement))
            ++counts_.reused;
        else
            TranslateAnew(*statement);
        return *statement;
    }
    CachedStatement made;
    made.key = KeyOf(sql, way);
    made.text = sql;
    made.way = way;
    TranslateAnew(made);
    if (sql.size() > kLongestKept) return long_ = std::move(made);
    if (statements_.size() >= kMostKept) {
        byText_.erase(statements_.back().key);
        statements_.pop_back();
    }
    statements_.push_front(std::move(made));
    byText_[statements_.front().key] = statements_.begin();
    return statements_.front();
}

CachedStatement* StatementCache::find(std::string_view sql, Way way) const {
    const auto found = way == Way::Any ? byText_.find(sql) : byText_.find(KeyOf(sql, way));
    return found == byText_.end() ? nullptr : &*found->second;
}

void StatementCache::TranslateAnew(CachedStatement& statement) {
    const unsigned version = catalogue_.version(); // an image may come while the answers are taken
    const NotingCatalogue noting(catalogue_);
    LeftOutSteps leftOut = leftOut_;
    if (statement.way == Way::Plain) leftOut.emplace(kColumnScans);
    statement.translation = Translate(statement.text, noting, leftOut);
    statement.asked = noting.asked();
    statement.version = version;
    statement.prepared = {};
    ++counts_.translated;
}

// A filter drops its working tables and makes them again with the same fields, so translations for them stay valid.
bool StatementCache::isGood(CachedStatement& statement) const {
    const unsigned version = catalogue_.version();
    if (statement.version == version) return true;
    const bool same = std::ranges::all_of(statement.asked, [&](const AskedTable& each) {
        if (each.question == Question::Link) return catalogue_.isLink(each.name) == (each.stamp != 0);
        if (each.question == Question::Image) return catalogue_.imageStamp(each.name) == each.stamp;
        if (each.question == Question::Index) {
            const TableInfo* const table = catalogue_.find(each.name);
            return table != nullptr && catalogue_.leadsIndex(*table, each.field) == (each.stamp != 0);
        }
        return catalogue_.stamp(each.name) == each.stamp;
    });
    if (same) statement.version = version;
    return same;
}

void StatementCache::GiveBack(std::string_view sql, Way way, PreparedStatement prepared) {
    sqlite3_reset(prepared.statement.get());
    CachedStatement* const statement = find(sql, way);
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
