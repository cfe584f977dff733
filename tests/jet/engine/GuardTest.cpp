#include "jet/engine/Guard.h"

#include "jet/TestDatabase.h"
#include "jet/engine/DatabaseFile.h"
#include "support/Journals.h"

#include <fstream>
#include <sqlite3.h>
#include <sys/stat.h>

namespace jet {
namespace {

/// A database as a stranger may hand it over: made by the plain engine.
class GuardTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::string Strange(const std::string& name, const std::string& sql) const {
        const std::string path = folder.path(name);
        std::filesystem::remove(path);
        sqlite3* plain = nullptr;
        EXPECT_EQ(sqlite3_open(path.c_str(), &plain), SQLITE_OK);
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(plain, sql.c_str(), nullptr, nullptr, &message), SQLITE_OK) << sql << ": " << message;
        sqlite3_free(message);
        sqlite3_close(plain);
        return path;
    }
    [[nodiscard]] std::shared_ptr<Connection> OpenStrange(const std::string& sql) const {
        return Connection::Open(Strange("strange.mdb", sql), "secret");
    }
    static void Write(const std::string& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }

    TestFolder folder;
};

TEST_F(GuardTest, LinksOfAForeignFileCountForNothing) {
    const std::string victim = Strange("victim.sqlite", "CREATE TABLE Data (a INTEGER); INSERT INTO Data VALUES (1)");
    const std::string links = "CREATE TABLE MSysLinks (Name TEXT, File TEXT, Password TEXT, SourceTable TEXT, "
                              "Writable INTEGER); INSERT INTO MSysLinks VALUES ('Data', '" +
                              victim + "', '', 'Data', 1), ('Kept', '', '', '', 0); CREATE TABLE Kept (a INTEGER)";
    {
        const auto strange = OpenStrange(links);
        EXPECT_EQ(FailureOf([&] { strange->Execute("DELETE * FROM Data"); }), ErrorNumber::NoSuchTable);
        EXPECT_EQ(FailureOf([&] { strange->CreateLink("x", victim, "", "Data"); }), ErrorNumber::ReadOnly);
        EXPECT_EQ(RowsOf(*strange, "SELECT Count(*) FROM Kept"), "0;");
    }
    // Closing drops no table that the list marks as dropped.
    EXPECT_EQ(Connection::Open(folder.path("strange.mdb"), "")->Tables().size(), 1U);
    EXPECT_EQ(RowsOf(*Connection::Open(victim, ""), "SELECT Count(*) FROM Data"), "1;");
}

TEST_F(GuardTest, NamesOfTheEngineAreRefused) {
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE T (a LONG)");
    for (const char* name : {"MSysLinks", "msyslinks", "MSysTessaro", "MSysX", "sqlite_stat1", "SQLite_master"}) {
        const std::string table = name;
        for (const std::string& sql : {"CREATE TABLE " + table + " (a LONG)", "DROP TABLE " + table,
                                       "SELECT a INTO " + table + " FROM T", "SELECT 1 AS a INTO [" + table + "]"})
            EXPECT_EQ(FailureOf([&] { connection->Execute(sql); }), ErrorNumber::ReadOnly) << sql;
        for (const std::string& sql : {"SELECT * FROM " + table, "INSERT INTO " + table + " VALUES (1)",
                                       "DELETE * FROM " + table, "ALTER TABLE " + table + " ADD x LONG"})
            EXPECT_EQ(FailureOf([&] { connection->Execute(sql); }), ErrorNumber::NoSuchTable) << sql;
    }
    // The file still opens with its password, and with that one only.
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Connection::Open(folder.path("a.mdb"), "x")); }),
              ErrorNumber::WrongPassword);
}

TEST_F(GuardTest, AJournalReachesNoFurtherFile) {
    const std::string victim = folder.path("precious.txt");
    Write(victim, "kept");
    const std::string path = Strange("a.mdb", "CREATE TABLE T (a)");
    const std::string alias = folder.path("alias.mdb");
    std::filesystem::create_symlink(path, alias);
    for (const std::string& opened : {path, alias}) {
        Write(path + "-journal", tessaro::test::JournalNaming(victim));
        EXPECT_EQ(FailureOf([&] { static_cast<void>(Connection::Open(opened, "")); }), ErrorNumber::NotADatabase);
        EXPECT_EQ(FailureOf([&] { Database::Copy(opened, folder.path("copy.mdb")); }), ErrorNumber::NotADatabase);
        EXPECT_EQ(FailureOf([&] { Database::Compact(opened); }), ErrorNumber::NotADatabase);
        const auto working = folder.MakeWorking("w.mdb");
        working->CreateLink("T", opened, "", "T");
        EXPECT_TRUE(FailureOf([&] { static_cast<void>(RowsOf(*working, "SELECT * FROM T")); }).has_value());
        EXPECT_TRUE(std::filesystem::exists(victim));
        std::filesystem::remove(folder.path("w.mdb"));
    }
    // What stands beside a database is never written to through a link.
    for (const char* const ending : {"-journal", "-wal", "-shm"}) {
        std::filesystem::remove(path + "-journal");
        std::filesystem::create_symlink(victim, path + ending);
        EXPECT_EQ(FailureOf([&] { static_cast<void>(Connection::Open(path, "")); }), ErrorNumber::NotADatabase);
        std::filesystem::remove(path + ending);
        ::mkfifo((path + ending).c_str(), 0600);
        EXPECT_EQ(FailureOf([&] { static_cast<void>(Connection::Open(path, "")); }), ErrorNumber::NotADatabase);
        std::filesystem::remove(path + ending);
    }
    EXPECT_EQ(std::filesystem::file_size(victim), 4U);
    EXPECT_EQ(Connection::Open(path, "")->Tables().size(), 1U);
}

// The plain engine believes the journal that the test above refuses.
TEST_F(GuardTest, TheJournalOfTheTestIsARealOne) {
    const std::string victim = folder.path("precious.txt");
    Write(victim, "gone");
    const std::string path = Strange("a.mdb", "CREATE TABLE T (a)");
    Write(path + "-journal", tessaro::test::JournalNaming(victim));
    sqlite3* plain = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &plain), SQLITE_OK);
    sqlite3_exec(plain, "SELECT * FROM T", nullptr, nullptr, nullptr);
    sqlite3_close(plain);
    EXPECT_FALSE(std::filesystem::exists(victim));
}

TEST_F(GuardTest, AnInterruptedWriteIsStillTakenBack) {
    const std::string path = Strange("a.mdb", "CREATE TABLE T (a); INSERT INTO T VALUES (1)");
    sqlite3* plain = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &plain), SQLITE_OK);
    sqlite3_exec(plain, "PRAGMA cache_size = 1; BEGIN; UPDATE T SET a = 2; CREATE TABLE U (b)", nullptr, nullptr,
                 nullptr);
    sqlite3_db_cacheflush(plain);
    std::filesystem::copy(path, folder.path("b.mdb"));
    std::filesystem::copy(path + "-journal", folder.path("b.mdb-journal"));
    sqlite3_close(plain);
    EXPECT_EQ(RowsOf(*Connection::Open(folder.path("b.mdb"), ""), "SELECT a FROM T"), "1;");
}

TEST_F(GuardTest, TriggersViewsAndVirtualTablesTakeNoPart) {
    const auto strange = OpenStrange(
        "CREATE TABLE Data (a INTEGER); CREATE TABLE Other (b INTEGER); INSERT INTO Other VALUES (1);"
        "CREATE TRIGGER t AFTER INSERT ON Data BEGIN DELETE FROM Other; END;"
        "CREATE VIEW Area AS WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n) SELECT x FROM n;"
        "CREATE VIRTUAL TABLE Unit USING fts5(x)");
    strange->Execute("INSERT INTO Data VALUES (1)");
    EXPECT_EQ(RowsOf(*strange, "SELECT b FROM Other"), "1;");
    for (const char* name : {"Area", "Unit"}) {
        EXPECT_EQ(strange->catalogue().find(name), nullptr);
        EXPECT_EQ(FailureOf([&] { static_cast<void>(RowsOf(*strange, std::string("SELECT x FROM ") + name)); }),
                  ErrorNumber::NoSuchTable);
    }
}

TEST_F(GuardTest, AFileThatComputesIsRefusedWithTheReason) {
    struct Case {
        const char* schema;
        const char* reason;
    };
    constexpr Case cases[] = {
        {"CREATE TABLE Data (a INTEGER, b TEXT AS (hex(zeroblob(50000000))))", "a computed field"},
        {"CREATE TABLE Data (a INTEGER, b GENERATED ALWAYS AS (a || a) STORED)", "a computed field"},
        {"CREATE TABLE Data (a INTEGER CHECK (length(hex(zeroblob(50000000))) > 0))", "the function 'hex'"},
        {"CREATE TABLE Data (a INTEGER,\xef\xbb\xbf"
         "CHECK(a LIKE '%a%a%a%b'))",
         "searches texts"},
        {"CREATE TABLE Data (a INTEGER, CHECK/**/(a || a || a))", "makes texts"},
        {"CREATE TABLE Data (a TEXT DEFAULT ( /* ) */ randomblob(100000000)))", "the function 'randomblob'"},
        {"CREATE TABLE Data (a); CREATE INDEX i ON Data (upper(a))", "the function 'upper'"},
        {"CREATE TABLE Data (a); CREATE INDEX i ON Data (a) WHERE a LIKE '%x'", "searches texts"},
        {"CREATE TABLE Data (a); CREATE TABLE Extra (a, b AS (hex(1)))", "'Extra'"},
    };
    for (const Case& each : cases) {
        try {
            static_cast<void>(OpenStrange(each.schema));
            ADD_FAILURE() << each.schema;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), ErrorNumber::NotADatabase);
            EXPECT_NE(std::string(error.what()).find(each.reason), std::string::npos) << error.what();
        }
        const auto working = folder.MakeWorking("w.mdb");
        working->CreateLink("Data", folder.path("strange.mdb"), "", "Data");
        EXPECT_EQ(FailureOf([&] { working->Execute("SELECT * INTO x FROM Data"); }), ErrorNumber::NoSuchTable);
        std::filesystem::remove(folder.path("w.mdb"));
    }
}

TEST_F(GuardTest, WhatOtherProgramsDeclareIsTaken) {
    const auto strange = OpenStrange(
        "CREATE TABLE \"check\" (\"as\" INTEGER PRIMARY KEY, [default] TEXT DEFAULT 'hex(1)', d DATE DEFAULT "
        "CURRENT_TIMESTAMP, n DOUBLE DEFAULT (- 5.5), CONSTRAINT c CHECK (n >= 0 OR n IN (-1, -5.5) AND (d IS NOT "
        "NULL)), CHECK (length([default]) <= 50), UNIQUE (n, d)); -- as AS\n"
        "CREATE INDEX i ON \"check\" ([default] COLLATE NOCASE DESC) WHERE n BETWEEN (1) AND (2)");
    EXPECT_EQ(strange->Execute("INSERT INTO [check] ([as]) VALUES (1)"), 1);
    EXPECT_EQ(RowsOf(*strange, "SELECT [default], n FROM [check]"), "hex(1)|-5.5;");
}

TEST_F(GuardTest, DefaultsAreConstants) {
    const auto connection = folder.Make("a.mdb");
    for (const char* sql :
         {"CREATE TABLE T (a DATETIME DEFAULT Now())", "CREATE TABLE T (a TEXT DEFAULT String(9, 'x'))",
          "CREATE TABLE T (a LONG DEFAULT 'x')", "CREATE TABLE T (a DATETIME DEFAULT 'x')"})
        EXPECT_EQ(FailureOf([&] { connection->Execute(sql); }), ErrorNumber::TypeMismatch) << sql;
    connection->Execute("CREATE TABLE T (k LONG, a LONG DEFAULT -5, b TEXT DEFAULT 'it''s', c DOUBLE DEFAULT '2.5', "
                        "d DATETIME DEFAULT #2000-01-02#, e TEXT DEFAULT NULL)");
    connection->Execute("INSERT INTO T (k) VALUES (1)");
    EXPECT_EQ(RowsOf(*connection, "SELECT a, b, c, d, e FROM T"), "-5|it's|2.5|2000-01-02|-;");
    EXPECT_EQ(Connection::Open(folder.path("a.mdb"), "secret")->Tables().size(), 1U);
}

TEST_F(GuardTest, HugeValuesFailTheStatement) {
    const auto strange = OpenStrange("CREATE TABLE Data (a INTEGER, b TEXT); INSERT INTO Data VALUES (1, 'x'), "
                                     "(2, zeroblob(5000000)), (3, hex(zeroblob(3000000)))");
    EXPECT_EQ(RowsOf(*strange, "SELECT a FROM Data"), "1;2;3;");
    for (const char* sql : {"SELECT b FROM Data", "SELECT a FROM Data WHERE b LIKE '*z*'", "SELECT Max(b) FROM Data"})
        EXPECT_EQ(FailureOf([&] { static_cast<void>(RowsOf(*strange, sql)); }), ErrorNumber::TooLarge) << sql;
}

TEST_F(GuardTest, APipeIsNoDatabase) {
    ::mkfifo(folder.path("pipe.mdb").c_str(), 0600);
    EXPECT_EQ(HeadOfFile(folder.path("pipe.mdb"), 20), "");
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Connection::Open(folder.path("pipe.mdb"), "")); }),
              ErrorNumber::NotADatabase);
}

} // namespace
} // namespace jet
