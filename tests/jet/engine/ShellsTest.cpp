#include "jet/TestDatabase.h"

#include <functional>
#include <sqlite3.h>

namespace jet {
namespace {

/// A working database with one linked table, in which a filter drops and makes its table in turns.
class ShellsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto data = folder.Make("data.mdb");
        data->Execute("CREATE TABLE Data (IUSNId LONG, AreaName TEXT(50))");
        data->Execute("INSERT INTO Data VALUES (1, 'a')");
        data->Execute("INSERT INTO Data VALUES (2, 'b')");
        working = folder.MakeWorking("work.mdb");
        working->CreateLink("Data", folder.path("data.mdb"), "secret", "Data");
        for (int turn = 0; turn < 3; ++turn)
            Filter();
    }
    void Drop() { working->Execute("DROP TABLE [_Found]"); }
    void Make() { working->Execute("SELECT DISTINCT IUSNId INTO [_Found] FROM Data WHERE IUSNId > 0"); }
    void Filter() {
        static_cast<void>(FailureOf([&] { Drop(); }));
        Make();
        EXPECT_EQ(Found(), "1;2;");
    }
    [[nodiscard]] std::string Found(const char* fields = "IUSNId") const {
        return RowsOf(*working, std::string("SELECT ") + fields + " FROM [_Found] ORDER BY 1");
    }
    [[nodiscard]] std::optional<ErrorNumber> Failure() const {
        return FailureOf([&] { static_cast<void>(Found()); });
    }
    /// What the file itself holds: rows of sqlite_master, or of another query.
    [[nodiscard]] std::string InFile(const char* sql) const {
        sqlite3* plain = nullptr;
        std::string found;
        sqlite3_open(folder.path("work.mdb").c_str(), &plain);
        const auto take = [](void* target, int, char** texts, char**) {
            *static_cast<std::string*>(target) += std::string(texts[0]) + ";";
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(plain, sql, take, &found, nullptr), SQLITE_OK);
        sqlite3_close(plain);
        return found;
    }
    [[nodiscard]] std::string Page() const {
        return InFile("SELECT rootpage FROM sqlite_master WHERE name = '_Found'");
    }

    TestFolder folder;
    std::shared_ptr<Connection> working;
};

TEST_F(ShellsTest, ATableMadeAgainAlikeIsFilledAndNotMade) {
    const std::string page = Page();
    const std::string schema = InFile("PRAGMA schema_version");
    const auto before = working->cacheCounts().translated;
    Filter();
    Filter();
    EXPECT_EQ(Page(), page);
    EXPECT_EQ(InFile("PRAGMA schema_version"), schema);
    EXPECT_EQ(working->cacheCounts().translated, before);
}

TEST_F(ShellsTest, ADroppedTableIsGoneForEverybody) {
    const auto tables = working->Tables().size();
    Drop();
    EXPECT_EQ(working->Tables().size(), tables - 1);
    EXPECT_EQ(Failure(), ErrorNumber::NoSuchTable);
    EXPECT_EQ(FailureOf([&] { Drop(); }), ErrorNumber::NoSuchTable);
    EXPECT_EQ(FailureOf([&] { working->Execute("INSERT INTO [_Found] VALUES (1)"); }), ErrorNumber::NoSuchTable);
    const auto other = Connection::Open(folder.path("work.mdb"), "secret", Use::Working);
    EXPECT_EQ(other->catalogue().find("_Found"), nullptr);
    EXPECT_EQ(other->Tables().size(), 1U);
    other->Execute("CREATE TABLE [_Found] (Other TEXT(5))");
    other->Execute("INSERT INTO [_Found] VALUES ('x')");
    EXPECT_EQ(Found("Other"), "x;");
}

TEST_F(ShellsTest, AnythingElseOfTheNameIsMadeAnew) {
    const struct {
        const char* what;
        std::function<void()> make;
        const char* rows;
    } cases[] = {
        {"other fields", [&] { working->Execute("SELECT IUSNId, AreaName INTO [_Found] FROM Data"); }, "1|a;2|b;"},
        {"a field of another type", [&] { working->Execute("SELECT CStr(IUSNId) AS IUSNId INTO [_FOUND] FROM Data"); },
         "1;2;"},
        {"a bare table", [&] { working->Execute("CREATE TABLE [_Found] (IUSNId LONG PRIMARY KEY)"); }, ""},
        {"a link", [&] { working->CreateLink("_Found", folder.path("data.mdb"), "secret", "Data"); }, "1|a;2|b;"},
        {"in a transaction that is taken back",
         [&] {
             working->Begin();
             Make();
             working->Rollback();
             EXPECT_EQ(Failure(), ErrorNumber::NoSuchTable);
             Make();
         },
         "1;2;"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        Drop();
        each.make();
        EXPECT_EQ(Found("*"), each.rows);
        Drop();
        Make();
        Filter();
    }
}

TEST_F(ShellsTest, AnIndexGoesWithItsTable) {
    working->Execute("CREATE UNIQUE INDEX i ON [_Found] (IUSNId)");
    Drop();
    working->Execute("SELECT 1 AS IUSNId INTO [_Found] FROM Data");
    EXPECT_EQ(Found(), "1;1;");
}

TEST_F(ShellsTest, AFailedQueryLeavesNoTable) {
    const auto fail = [&] {
        return FailureOf([&] { working->Execute("SELECT DISTINCT CLng(AreaName) AS IUSNId INTO [_Found] FROM Data"); });
    };
    Drop();
    EXPECT_NE(fail(), std::nullopt);
    EXPECT_EQ(Failure(), ErrorNumber::NoSuchTable);
    EXPECT_NE(fail(), std::nullopt);
    Make();
    EXPECT_EQ(Found(), "1;2;");
}

TEST_F(ShellsTest, RowsThatAreBeingReadStay) {
    Recordset open = working->OpenRecordset("SELECT IUSNId FROM [_Found] ORDER BY IUSNId", CursorType::ForwardOnly);
    Filter();
    Drop();
    EXPECT_EQ(open.GetString(-1, "|", ";"), "1;2;");
}

TEST_F(ShellsTest, AClosedFileHoldsWhatWasNotDropped) {
    Drop();
    EXPECT_NE(Page(), "");
    working.reset();
    EXPECT_EQ(Page(), "");
    EXPECT_EQ(InFile("SELECT Name FROM MSysLinks"), "Data;");
}

} // namespace
} // namespace jet
