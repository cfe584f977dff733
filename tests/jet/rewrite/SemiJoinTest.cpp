#include "jet/TestDatabase.h"
#include "jet/emit/Translator.h"

#include <set>
#include <sstream>

namespace jet {
namespace {

/// Small tables with repeated, missing and Null keys.
class SemiJoinTest : public ::testing::Test {
  protected:
    SemiJoinTest() : connection(folder.Make("data.mdb")) {
        Fill("Data", "RowNId LONG, AreaNId LONG, TimePeriodNId LONG, IUSNId LONG, Datavalue TEXT(20)",
             {"1, 1, 1, 1, '5'", "2, 1, 2, 1, '7'", "3, 2, 1, 2, 'n/a'", "4, 2, 1, 1, Null", "5, 9, 1, 1, '1'",
              "6, Null, 1, 2, '2'", "7, 3, 3, 3, '3'"});
        Fill("Area", "AreaNId LONG, AreaID TEXT(20), AreaName TEXT(20), DataExists YESNO",
             {"1, 'A1', 'north', True", "2, 'a1', 'North', False", "3, 'B1', 'South', True", "4, 'B1', Null, True",
              "Null, 'C1', 'Nowhere', True"});
        Fill("TimePeriod", "TimePeriodNId LONG, TimePeriod TEXT(20)", {"1, '2001'", "2, '2002'", "3, '2001'"});
        Fill("_SelArea", "AreaNId LONG, AreaID TEXT(20)", {"1, 'A1'", "1, 'A1'", "2, 'A1'", "Null, 'X'"});
        Fill("_SelIUS", "IUSNId LONG, SourceNId LONG", {"1, 1", "1, 2", "3, 1"});
        Fill("Nothing", "AreaNId LONG", {});
    }

    void Fill(const std::string& table, const std::string& columns, const std::vector<std::string>& rows) {
        connection->Execute("CREATE TABLE [" + table + "] (" + columns + ")");
        for (const std::string& row : rows)
            connection->Execute("INSERT INTO [" + table + "] VALUES (" + row + ")");
    }

    [[nodiscard]] std::multiset<std::string> Rows(const std::string& sql) const {
        std::multiset<std::string> rows;
        std::istringstream text(connection->OpenRecordset(sql).GetString(-1, "|", "\n", "-"));
        for (std::string row; std::getline(text, row);)
            rows.insert(row);
        return rows;
    }
    /// The rows of the same SELECT without DISTINCT, each once.
    [[nodiscard]] std::multiset<std::string> EachOnce(const std::string& rest) const {
        const std::multiset<std::string> all = Rows("SELECT " + rest);
        const std::set<std::string> once(all.begin(), all.end());
        return {once.begin(), once.end()};
    }
    [[nodiscard]] std::string Translated(const std::string& sql) const {
        return Translate(sql, connection->catalogue()).statements.back();
    }

    TestFolder folder;
    std::shared_ptr<Connection> connection;
};

enum class Turned { No, Membership, Existence };

TEST_F(SemiJoinTest, GivesTheRowsOfTheJoinEachOnce) {
    struct Case {
        Turned turned;
        const char* rest; ///< of SELECT DISTINCT
    };
    const Case cases[] = {
        {Turned::Membership, "A.AreaNId FROM Area AS A INNER JOIN Data AS D ON A.AreaNId = D.AreaNId"},
        {Turned::Membership, "A.AreaNId FROM Data AS D INNER JOIN Area AS A ON D.AreaNId = A.AreaNId"},
        {Turned::Membership, "T.TimePeriodNId FROM TimePeriod T, Data D WHERE T.TimePeriodNId = D.TimePeriodNId"},
        {Turned::Membership, "D.IUSNId, D.TimePeriodNId FROM DATA D, [_SelArea] A  WHERE D.AreaNId = A.AreaNId "},
        {Turned::Existence, "A.AreaNId, A.AreaName FROM Area AS A INNER JOIN Data AS D ON A.AreaNId = D.AreaNId WHERE "
                            "D.IUSNId = 1 AND A.DataExists = True"},
        {Turned::Existence, "A.AreaNId FROM _SelIUS AS I INNER JOIN (Area AS A INNER JOIN Data AS D ON A.AreaNId = "
                            "D.AreaNId) ON I.IUSNId = D.IUSNId"},
        {Turned::Existence,
         "T.TimePeriodNId FROM _SelIUS AS I INNER JOIN (TimePeriod AS T INNER JOIN (_SelArea AS A INNER "
         "JOIN Data AS D ON A.AreaNId = D.AreaNId) ON T.TimePeriodNId = D.TimePeriodNId) ON I.IUSNId = "
         "D.IUSNId WHERE T.TimePeriodNId > 0"},
        {Turned::Existence, "A.AreaNId FROM Area A, _SelArea S WHERE A.AreaID = S.AreaID"},
        {Turned::Existence, "A.AreaNId FROM Area A, _SelArea S WHERE A.AreaNId <> S.AreaNId"},
        {Turned::Existence, "A.AreaNId FROM Area A, Data D WHERE A.AreaNId = D.AreaNId OR D.AreaNId = 9"},
        {Turned::Existence, "A.AreaNId FROM Area A, Data D"},
        {Turned::Existence, "A.AreaNId FROM Area A, Nothing N"},
        {Turned::Existence, "A.AreaNId FROM Area A INNER JOIN Data D ON A.AreaNId = D.AreaNId + 0"},
        {Turned::Membership, "A.* FROM Area A INNER JOIN Data D ON A.AreaNId = D.AreaNId"},
        {Turned::Membership, "DataExists FROM Area A INNER JOIN Data D ON A.AreaNId = D.AreaNId"},
        {Turned::Membership, "T.TimePeriod & '!' AS p FROM TimePeriod T INNER JOIN Data D ON T.TimePeriodNId = "
                             "D.TimePeriodNId ORDER BY T.TimePeriod & '!'"},
        {Turned::No, "A.AreaNId, D.IUSNId FROM Area AS A INNER JOIN Data AS D ON A.AreaNId = D.AreaNId"},
        {Turned::No, "A.AreaNId FROM Area AS A LEFT JOIN Data AS D ON A.AreaNId = D.AreaNId"},
        {Turned::No, "A.AreaNId, Count(D.IUSNId) FROM Area AS A INNER JOIN Data AS D ON A.AreaNId = D.AreaNId GROUP BY "
                     "A.AreaNId"},
        {Turned::No, "Count(A.AreaNId) FROM Area AS A INNER JOIN Data AS D ON A.AreaNId = D.AreaNId"},
        {Turned::No, "* FROM Area AS A INNER JOIN TimePeriod AS T ON A.AreaNId = T.TimePeriodNId"},
        {Turned::No, "A.AreaNId FROM Area A, (SELECT AreaNId FROM Data) D WHERE A.AreaNId = D.AreaNId"},
    };
    for (const Case& c : cases) {
        const std::string sql = std::string("SELECT DISTINCT ") + c.rest;
        EXPECT_EQ(Rows(sql), EachOnce(c.rest)) << sql;
        const std::string text = Translated(sql);
        EXPECT_EQ(text.find("EXISTS (") != std::string::npos, c.turned == Turned::Existence) << text;
        EXPECT_EQ(text.find(" IN (SELECT ") != std::string::npos, c.turned == Turned::Membership) << text;
    }
}

TEST_F(SemiJoinTest, KeepsAnOrderByAnotherTable) {
    EXPECT_EQ(RowsOf(*connection,
                     "SELECT DISTINCT D.IUSNId, T.TimePeriod FROM Data D, TimePeriod T, Area A WHERE "
                     "D.TimePeriodNId = T.TimePeriodNId AND D.AreaNId = A.AreaNId ORDER BY T.TimePeriod DESC, "
                     "D.IUSNId"),
              "1|2002;1|2001;2|2001;3|2001;");
}

TEST_F(SemiJoinTest, AlsoWhereRowsAreWrittenToATable) {
    connection->Execute(
        "SELECT DISTINCT D.IUSNId INTO [_DataTime] FROM [Data] D, [TimePeriod] T  WHERE D.TimePeriodNId = "
        "T.TimePeriodNId");
    EXPECT_EQ(RowsOf(*connection, "SELECT IUSNId FROM _DataTime ORDER BY IUSNId"), "1;2;3;");
    connection->Execute(
        "INSERT INTO [_DataTime] (IUSNId) SELECT DISTINCT I.IUSNId FROM _SelIUS I, Data D WHERE I.IUSNId = "
        "D.IUSNId");
    EXPECT_EQ(RowsOf(*connection, "SELECT IUSNId FROM _DataTime ORDER BY IUSNId"), "1;1;2;3;3;");
}

TEST_F(SemiJoinTest, AnUpdateChangesTheRowsOfItsJoin) {
    struct Case {
        bool turned;
        const char* tables;
        const char* where;
    };
    const Case cases[] = {
        {true, "Area A INNER JOIN Data D ON A.AreaNId = D.AreaNId", "D.IUSNId = 1"},
        {true, "Data D INNER JOIN Area A ON D.AreaNId = A.AreaNId", "A.DataExists = True"},
        {true, "(Data D INNER JOIN _SelIUS I ON D.IUSNId = I.IUSNId) INNER JOIN Area A ON D.AreaNId = A.AreaNId",
         "I.SourceNId = 1 AND A.AreaID Like 'A*'"},
        {true, "Area A, _SelArea S", "A.AreaID = S.AreaID"},
        {true, "Area A, _SelArea S, Data D", "A.AreaID = S.AreaID AND D.AreaNId = A.AreaNId"},
        {false, "Area A, _SelArea S", "A.AreaID = S.AreaID AND A.AreaNId = S.AreaNId"},
        {false, "Area A, _SelArea S", "A.AreaNId < S.AreaNId"},
        {false, "Area A, Area B", "A.AreaID Like Mid(B.AreaID,1,1) & '*' AND B.AreaNId = 3"},
        {false, "Area A, _SelIUS I", "I.IUSNId = 3"},
        {false, "Area A, Nothing N", "A.AreaNId > 0"},
        {false, "Area A LEFT JOIN Data D ON A.AreaNId = D.AreaNId", "D.AreaNId Is Null"},
        {true, "Area A INNER JOIN Nothing N ON A.AreaNId = N.AreaNId", "A.AreaNId > 0"},
    };
    for (const Case& each : cases) {
        const std::string rest = std::string(each.tables) + " SET A.AreaName = 'hit' WHERE " + each.where;
        const std::string update = "UPDATE " + rest;
        EXPECT_EQ(Translated(update).find("rowid") == std::string::npos, each.turned) << Translated(update);
        const auto expected = EachOnce("A.AreaID, A.AreaNId FROM " + std::string(each.tables) + " WHERE " + each.where);
        connection->Begin();
        EXPECT_EQ(connection->Execute(update), static_cast<std::int64_t>(expected.size())) << update;
        EXPECT_EQ(Rows("SELECT AreaID, AreaNId FROM Area WHERE AreaName = 'hit'"), expected) << update;
        connection->Rollback();
    }
    // A value of the other table is carried along.
    connection->Execute("UPDATE Area A INNER JOIN Data D ON A.AreaNId = D.AreaNId SET A.AreaName = D.Datavalue WHERE "
                        "D.RowNId = 3");
    EXPECT_EQ(RowsOf(*connection, "SELECT AreaName FROM Area WHERE AreaNId = 2"), "n/a;");
}

TEST_F(SemiJoinTest, NamesThatCannotBePlacedAreStillReported) {
    EXPECT_EQ(
        FailureOf([&] { (void)Rows("SELECT DISTINCT A.AreaNId FROM Area A, Data D WHERE A.AreaNId = D.Nowhere"); }),
        ErrorNumber::NoSuchColumn);
    EXPECT_EQ(FailureOf([&] { (void)Rows("SELECT DISTINCT A.AreaNId FROM Area A, Missing D"); }),
              ErrorNumber::NoSuchTable);
}

} // namespace
} // namespace jet
