#include "jet/rewrite/Rewrites.h"

#include "jet/FixedCatalogue.h"
#include "jet/TestDatabase.h"

#include <algorithm>
#include <random>
#include <set>
#include <sstream>

namespace jet::test {
namespace {

/// Statements for each step that pick some of the few rows below, but not all.
constexpr const char* kMadeForSteps[] = {
    "SELECT * FROM _Data p WHERE p.TimePeriod = (SELECT Max(q.TimePeriod) FROM _Data q WHERE q.AreaId = p.AreaId)",
    "SELECT * FROM Data D WHERE D.AreaNId = 1 AND D.Datavalue = (SELECT Min(Datavalue) FROM Data E WHERE E.IUSNId = "
    "D.IUSNId AND E.AreaNId > 1)",
    "DELETE FROM Data WHERE RowNId = (SELECT Max(E.RowNId) FROM Data E WHERE E.IUSNId = Data.IUSNId)",
    "UPDATE Data SET FootnoteNId = 9 WHERE RowNId = (SELECT Min(E.RowNId) FROM Data E WHERE E.AreaNId = Data.AreaNId)",
    "UPDATE Area A, Unit U SET A.AreaName = 'hit' WHERE A.AreaID Like U.Unit AND A.AreaLevel > 1",
    "UPDATE Area A, Unit U SET A.AreaName = U.UnitGId WHERE A.AreaID Like '[' & U.Unit & '-3]' AND U.Unit < '3'",
    "UPDATE Area A, Unit U, Data D SET A.AreaName = 'hit' WHERE A.AreaNId = D.AreaNId AND A.AreaID Like U.Unit & '*'",
    "SELECT DISTINCT IUSNId FROM Data",
    "SELECT DISTINCT A.AreaName FROM Area A, Data D WHERE A.AreaNId = D.AreaNId AND D.IUSNId = 2",
    "UPDATE Area A INNER JOIN Data D ON A.AreaNId = D.AreaNId SET A.AreaName = 'hit' WHERE D.IUSNId = 3"};

/// The tables of the corpus with some rows each, whose few different values meet in joins.
class RewritesTest : public ::testing::Test {
  protected:
    RewritesTest() {
        Database::Create(folder_.path("all.mdb"), "secret");
        const auto all = Connection::Open(folder_.path("all.mdb"), "secret");
        for (const std::string& create : CorpusLines("schema.txt")) {
            all->Execute(create);
            Fill(*all, std::get<tree::CreateTable>(Parse(create)));
        }
        all->Execute("CREATE INDEX ByCombination ON Data (IUSNId)");
    }

    void Fill(Connection& connection, const tree::CreateTable& table) {
        constexpr int kRows = 12;
        for (int row = 1; row <= kRows; ++row) {
            std::string names;
            std::string values;
            for (const tree::ColumnDefinition& column : table.columns) {
                if (column.type == ColumnType::Counter || column.type == ColumnType::Guid) continue;
                names += (names.empty() ? "[" : ", [") + column.name + "]";
                values += (values.empty() ? "" : ", ") + (column.primaryKey ? std::to_string(row) : Any(column.type));
            }
            connection.Execute("INSERT INTO [" + table.table + "] (" + names + ") VALUES (" + values + ")");
        }
    }

    std::string Any(ColumnType type) {
        const std::string few = std::to_string(random_() % 4 + 1);
        if (type == ColumnType::YesNo) return random_() % 2 == 0 ? "True" : "False";
        if (type == ColumnType::DateTime) return "#2001-02-0" + few + "#";
        return type == ColumnType::Text || type == ColumnType::Memo ? "'" + few + "'" : few;
    }

    /// The rows of a query in any order, or what a change leaves in all tables.
    [[nodiscard]] static std::multiset<std::string> Outcome(Connection& connection, const std::string& sql) {
        std::multiset<std::string> rows;
        const auto add = [&](const std::string& query) {
            std::istringstream text(connection.OpenRecordset(query).GetString(-1, "|", "\n", "-"));
            for (std::string row; std::getline(text, row);)
                rows.insert(row);
        };
        try {
            add(sql);
            return rows;
        } catch (const Error& error) {
            if (error.number() != ErrorNumber::NoRows) return {error.what()};
        }
        connection.Begin();
        try {
            rows.insert(std::to_string(connection.Execute(sql)));
            for (const TableInfo& table : connection.Tables()) {
                const TableInfo& found = *connection.catalogue().find(table.name);
                const bool random = std::ranges::count(found.columns, ColumnType::Guid, &ColumnInfo::type) > 0;
                add((random ? "SELECT Count(*) FROM [" : "SELECT * FROM [") + table.name + "]");
            }
        } catch (const Error& error) {
            rows = {error.what()};
        }
        connection.Rollback();
        return rows;
    }

    [[nodiscard]] std::shared_ptr<Connection> OpenWithout(std::string_view step) const {
        auto connection = Connection::Open(folder_.path("all.mdb"), "secret");
        if (!step.empty()) connection->LeaveOutStep(step);
        return connection;
    }

    TestFolder folder_;
    std::mt19937 random_{1};
};

TEST_F(RewritesTest, NoStepChangesTheRowsOfAnyStatement) {
    const auto with = OpenWithout("");
    std::vector<std::string> statements = CorpusLines("statements.txt");
    statements.insert(statements.end(), std::begin(kMadeForSteps), std::end(kMadeForSteps));
    std::vector<std::shared_ptr<Connection>> without;
    for (const Rewrite& step : Rewrites())
        without.push_back(OpenWithout(step.name));
    std::set<std::string_view> taken;
    for (const std::string& sql : statements) {
        const Explanation explained = with->Explain(sql);
        const auto outcome = Outcome(*with, sql);
        for (std::size_t i = 0; i < without.size(); ++i) {
            const std::string_view step = Rewrites()[i].name;
            EXPECT_EQ(Outcome(*without[i], sql), outcome) << sql << "\nwithout " << step;
            const Explanation other = without[i]->Explain(sql);
            EXPECT_EQ(std::ranges::count(other.steps, step), 0) << sql;
            if (std::ranges::find(explained.steps, step) == explained.steps.end()) continue;
            taken.insert(step);
            EXPECT_NE(other.texts, explained.texts) << sql;
        }
    }
    constexpr std::size_t kForLargeTables = 2; // tried in ColumnScansTest and TextJoinsTest
    EXPECT_EQ(taken.size(), Rewrites().size() - kForLargeTables) << "no statement of the corpus needs the others";
}

TEST_F(RewritesTest, OnlyAStepThatThereIsCanBeLeftOut) {
    EXPECT_EQ(FailureOf([&] { static_cast<void>(OpenWithout("no-such-step")); }), ErrorNumber::SyntaxError);
}

} // namespace
} // namespace jet::test
