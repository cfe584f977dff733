#include "jet/TestDatabase.h"

#include <sqlite3.h>

namespace jet {
namespace {

class RecordsetTest : public ::testing::TestWithParam<CursorType> {
  protected:
    void SetUp() override {
        connection = folder.Make("a.mdb");
        connection->Execute("CREATE TABLE [T] (Id INTEGER, Name TEXT(50), Amount DOUBLE)");
    }
    void Fill(int rows) const {
        connection->Begin();
        for (int i = 1; i <= rows; ++i)
            connection->Execute("INSERT INTO [T] VALUES (" + std::to_string(i) + ", 'n" + std::to_string(i) + "', " +
                                (i % 3 == 0 ? "Null" : std::to_string(i) + ".5") + ")");
        connection->Commit();
    }
    [[nodiscard]] Recordset Open(CursorType cursor, const std::string& tail = "") const {
        return connection->OpenRecordset("SELECT Id, Name, Amount FROM [T] " + tail, cursor);
    }

    TestFolder folder;
    std::shared_ptr<Connection> connection;
};

TEST_P(RecordsetTest, AnEmptyResultIsAtBothEnds) {
    Recordset rows = Open(GetParam());
    EXPECT_TRUE(rows.atEnd() && rows.atStart());
    EXPECT_EQ(rows.FieldCount(), 3U);
    rows.MoveNext();
    EXPECT_EQ(FailureOf([&] { static_cast<void>(rows[0]); }), ErrorNumber::NoSuchColumn);
    EXPECT_EQ(rows.GetString(), "");
}

TEST_P(RecordsetTest, GivesEveryRowOnceAcrossAllBlocks) {
    Fill(10000);
    Recordset rows = Open(GetParam(), "ORDER BY Id");
    int expected = 0;
    for (; !rows.atEnd(); rows.MoveNext()) {
        ++expected;
        ASSERT_EQ(rows["ID"], Value(expected));
        ASSERT_EQ(rows["name"], Value("n" + std::to_string(expected)));
        ASSERT_EQ(rows[2], expected % 3 == 0 ? Value() : Value(expected + 0.5));
    }
    EXPECT_EQ(expected, 10000);
    rows.MoveFirst();
    EXPECT_EQ(rows[0], Value(1));
    rows.Move(9999, 1);
    EXPECT_EQ(rows[0], Value(10000));
}

TEST_P(RecordsetTest, FieldsThatAreNotThereAreErrors) {
    Fill(1);
    const Recordset rows = Open(GetParam());
    EXPECT_EQ(FailureOf([&] { static_cast<void>(rows[3]); }), ErrorNumber::NoSuchColumn);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(rows["None"]); }), ErrorNumber::NoSuchColumn);
    EXPECT_EQ(rows.FieldIndex("None"), -1);
}

TEST_P(RecordsetTest, RowsDoNotMoveUnderTheReader) {
    Fill(100);
    Recordset rows = Open(GetParam());
    int read = 0;
    for (; !rows.atEnd(); rows.MoveNext(), ++read)
        connection->Execute("INSERT INTO [T] VALUES (" + rows[0].toText() + ", 'copy', 0)");
    EXPECT_EQ(read, 100);
    EXPECT_EQ(RowsOf(*connection, "SELECT COUNT(*) AS n FROM [T]"), "200;");
}

TEST_P(RecordsetTest, TablesMayGoWhileTheyAreRead) {
    Fill(5000);
    Recordset rows = Open(GetParam(), "ORDER BY Id");
    rows.MoveNext();
    connection->Execute("DROP TABLE [T]");
    connection->Execute("CREATE TABLE [T] (Id INTEGER)");
    EXPECT_EQ(rows[0], Value(2));
    EXPECT_EQ(rows.GetRows().size(), 4999U);
}

TEST_P(RecordsetTest, FindsForwardFromTheCurrentRow) {
    Fill(20);
    const std::pair<const char*, const char*> cases[] = {
        {"Name = 'N7'", "7"}, {"[Name] Like 'n1#'", "10"}, {"Id >= 12", "12"},     {"Amount > 13.6", "14"},
        {"Id <> 1", "2"},     {"Name = 'none'", "end"},    {"Amount = 'n'", "end"}};
    for (const auto& [criterion, id] : cases) {
        Recordset rows = Open(GetParam(), "ORDER BY Id");
        rows.Find(criterion);
        EXPECT_EQ(rows.atEnd() ? "end" : rows[0].toText(), id) << criterion;
    }
    Recordset rows = Open(GetParam());
    for (const char* criterion :
         {"", "Name", "Name =", "Name = 'a", "Name = a", "Name = 'a' And Id = 1", "= 3", "[Name = 3"})
        EXPECT_EQ(FailureOf([&] { rows.Find(criterion); }), ErrorNumber::SyntaxError) << criterion;
}

TEST_P(RecordsetTest, GivesRowsAsText) {
    Fill(3);
    Recordset rows = Open(GetParam(), "ORDER BY Id");
    EXPECT_EQ(rows.GetString(1), "1\tn1\t1.5\r");
    EXPECT_EQ(rows.GetString(-1, ",", "\n", "Null"), "2,n2,2.5\n3,n3,Null\n");
    EXPECT_TRUE(rows.atEnd());
}

INSTANTIATE_TEST_SUITE_P(Cursors, RecordsetTest,
                         ::testing::Values(CursorType::ForwardOnly, CursorType::Static, CursorType::Keyset));

TEST_F(RecordsetTest, StaticAndKeysetMoveFreely) {
    Fill(10);
    for (const CursorType cursor : {CursorType::Static, CursorType::Keyset}) {
        Recordset rows = Open(cursor, "ORDER BY Id");
        rows.Move(4);
        EXPECT_EQ(rows[0], Value(5));
        rows.MovePrevious();
        EXPECT_EQ(rows[0], Value(4));
        rows.Move(-100);
        EXPECT_TRUE(rows.atStart());
        rows.MoveNext();
        EXPECT_EQ(rows[0], Value(1));
        EXPECT_EQ(rows.RecordCount(), 10);
        rows.MoveLast();
        EXPECT_EQ(rows[0], Value(10));
        rows.Move(INT64_MAX);
        EXPECT_TRUE(rows.atEnd());
    }
}

TEST_F(RecordsetTest, ForwardOnlyRefusesToGoBack) {
    Fill(2);
    Recordset rows = Open(CursorType::ForwardOnly);
    EXPECT_EQ(rows.RecordCount(), -1);
    EXPECT_EQ(FailureOf([&] { rows.MovePrevious(); }), ErrorNumber::EngineError);
    EXPECT_EQ(FailureOf([&] { rows.Move(-1); }), ErrorNumber::EngineError);
}

TEST_F(RecordsetTest, StaticOutlivesItsConnection) {
    Fill(2);
    Recordset rows = Open(CursorType::Static, "ORDER BY Id");
    Recordset flow = Open(CursorType::ForwardOnly, "ORDER BY Id");
    connection->Close();
    connection.reset();
    EXPECT_EQ(rows.GetString(-1, "|", ";", "-"), "1|n1|1.5;2|n2|2.5;");
    EXPECT_EQ(flow.GetRows().size(), 2U);
}

TEST_F(RecordsetTest, KeepsValuesOfEveryKindAndSize) {
    // columns without a type, as files of other makers have them
    sqlite3* plain = nullptr;
    ASSERT_EQ(sqlite3_open(folder.path("a.mdb").c_str(), &plain), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(plain,
                     "CREATE TABLE Mixed (v); INSERT INTO Mixed VALUES (Null), ('a'), (0), (9223372036854775807), "
                     "(0.25), (Null), (''), ('1e300'), (1e300), ('é');"
                     "CREATE TABLE Wide (v); INSERT INTO Wide VALUES (Null), (-9223372036854775808), (Null), "
                     "(9223372036854775807), (0);"
                     "CREATE TABLE Narrow (v); INSERT INTO Narrow VALUES (1000000300), (Null), (1000000000);"
                     "CREATE TABLE Texts (v); INSERT INTO Texts VALUES (Null), ('ab'), (Null), (''), ('cd');",
                     nullptr, nullptr, nullptr),
        SQLITE_OK);
    sqlite3_close(plain);
    EXPECT_EQ(RowsOf(*connection, "SELECT v FROM Mixed"), "-;a;0;9223372036854775807;0.25;-;;1e300;1E+300;é;");
    EXPECT_EQ(RowsOf(*connection, "SELECT v FROM Wide"), "-;-9223372036854775808;-;9223372036854775807;0;");
    EXPECT_EQ(RowsOf(*connection, "SELECT v FROM Narrow"), "1000000300;-;1000000000;");
    EXPECT_EQ(RowsOf(*connection, "SELECT v FROM Texts"), "-;ab;-;;cd;");
}

TEST_F(RecordsetTest, AClosedOneIsEmpty) {
    Recordset rows;
    EXPECT_FALSE(rows.isOpen());
    EXPECT_TRUE(rows.atEnd() && rows.atStart());
    EXPECT_EQ(rows.FieldCount(), 0U);
    EXPECT_TRUE(rows.GetRows().empty());
}

} // namespace
} // namespace jet
