#include "jet/TestDatabase.h"
#include "jet/emit/Translator.h"

namespace jet {
namespace {

TEST(GroupConditionsTest, AConditionOnGroupFieldsHoldsBeforeGrouping) {
    const TestFolder folder;
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE D (i LONG, t TEXT(9))");
    connection->Execute("CREATE TABLE S (i LONG, Deleted YESNO, n TEXT(9))");
    for (const char* row : {"1, '2001'", "1, '2003'", "2, '2002'", "3, '1999'", "Null, '2005'"})
        connection->Execute(std::string("INSERT INTO D VALUES (") + row + ")");
    for (const char* row : {"1, False, 'a'", "2, True, 'b'", "3, False, 'A'"})
        connection->Execute(std::string("INSERT INTO S VALUES (") + row + ")");
    const std::string joined = "SELECT D.i, Max(D.t) FROM S INNER JOIN D ON S.i = D.i GROUP BY D.i, S.Deleted ";
    const struct {
        std::string sql;
        const char* rows;
        bool before; ///< nothing is left of HAVING
    } cases[] = {
        {joined + "HAVING S.Deleted=False", "1|2003;3|1999;", true},
        {joined + "HAVING S.Deleted=True", "2|2002;", true},
        {joined + "HAVING S.Deleted=False AND D.i > 1", "3|1999;", true},
        {joined + "HAVING S.Deleted=False OR D.i = 2", "1|2003;2|2002;3|1999;", true},
        {joined + "HAVING S.Deleted=False AND Max(D.t) < '2000'", "3|1999;", false},
        {joined + "HAVING S.Deleted=False AND S.Deleted=True", "", true},
        {"SELECT Count(*) FROM S GROUP BY S.Deleted HAVING S.Deleted=True", "1;", true},
        {"SELECT Count(*) FROM S WHERE S.i > 2 GROUP BY S.Deleted HAVING S.Deleted=True", "", true},
        {"SELECT S.Deleted, Count(*) FROM S WHERE S.i < 3 GROUP BY S.Deleted, S.i HAVING S.Deleted=True AND S.i = 2",
         "-1|1;", true},
        {"SELECT S.n, Count(*) FROM S GROUP BY S.n HAVING S.n = 'A'", "a|2;", false},
        {"SELECT Count(*) FROM S HAVING Count(*) > 2", "3;", false},
        {"SELECT D.i, Count(*) FROM D LEFT JOIN S ON D.i = S.i GROUP BY D.i HAVING D.i IS NULL", "-|1;", true},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(RowsOf(*connection, each.sql), each.rows) << each.sql;
        const std::string translated = Translate(each.sql, connection->catalogue()).statements.front();
        EXPECT_EQ(translated.find("HAVING") == std::string::npos, each.before) << translated;
    }
}

} // namespace
} // namespace jet
