#include "jet/TestDatabase.h"
#include "jet/engine/DatabaseFile.h"

#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <sqlite3.h>
#include <sys/wait.h>

namespace jet {
namespace {

class ConnectionTest : public ::testing::Test {
  protected:
    TestFolder folder;

    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder.path(name), std::ios::binary) << bytes;
    }
    [[nodiscard]] std::optional<ErrorNumber> OpenFailure(const std::string& path,
                                                         const std::string& password = "secret") const {
        return FailureOf([&] { static_cast<void>(Connection::Open(path, password)); });
    }
};

TEST_F(ConnectionTest, RefusesWhatIsNoDatabase) {
    Write("empty.mdb", "");
    Write("short.mdb", "SQLite format 3");
    Write("text.mdb", std::string(5000, 'x'));
    Write("jet.mdb", std::string("\0\1\0\0Standard Jet DB\0", 20) + std::string(4000, '\0'));
    Write("garbage.mdb", std::string("SQLite format 3\0", 16) + std::string(5000, '\x5A'));
    std::filesystem::create_directory(folder.path("folder.mdb"));
    for (const char* name :
         {"empty.mdb", "short.mdb", "text.mdb", "jet.mdb", "garbage.mdb", "folder.mdb", "missing.mdb"})
        EXPECT_EQ(OpenFailure(folder.path(name)), ErrorNumber::NotADatabase) << name;
    EXPECT_EQ(OpenFailure(""), ErrorNumber::NotADatabase);
}

TEST_F(ConnectionTest, NamesAGenuineJetFileAsSuch) {
    Write("jet.mdb", std::string("\0\1\0\0Standard ACE DB\0", 20) + std::string(4000, '\0'));
    try {
        static_cast<void>(Connection::Open(folder.path("jet.mdb"), "secret"));
        FAIL();
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("genuine Jet"), std::string::npos);
    }
}

TEST_F(ConnectionTest, ReadsTheHeadOfAFileWithoutTakingItsLocks) {
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE [Data] (a INTEGER)");
    // A process of its own: locks do not stand in the way of the one that has them.
    const auto lockedForOthers = [&] {
        const pid_t child = ::fork();
        if (child == 0) {
            struct flock lock {};
            lock.l_type = F_WRLCK;
            lock.l_start = 0x40000001; // where whoever writes next keeps the others off
            lock.l_len = 1;
            const int file = ::open(folder.path("a.mdb").c_str(), O_RDWR);
            ::_exit(file >= 0 && ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK ? 1 : 0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WEXITSTATUS(status) == 1;
    };
    connection->Begin();
    ASSERT_TRUE(lockedForOthers());
    EXPECT_EQ(HeadOfFile(folder.path("a.mdb"), 15), "SQLite format 3");
    EXPECT_TRUE(lockedForOthers());
    connection->Commit();
    EXPECT_FALSE(lockedForOthers());

    Write("short.mdb", "abc");
    EXPECT_EQ(HeadOfFile(folder.path("short.mdb"), 15), "abc");
    EXPECT_EQ(HeadOfFile(folder.path("missing.mdb"), 15), "");
    EXPECT_EQ(HeadOfFile(folder.path(""), 15), "") << "a folder";
}

TEST_F(ConnectionTest, RefusesAFileThatWasCutShort) {
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE [Data] (a INTEGER)");
    connection->Close();
    std::filesystem::resize_file(folder.path("a.mdb"), 4096);
    EXPECT_EQ(OpenFailure(folder.path("a.mdb")), ErrorNumber::NotADatabase);
}

TEST_F(ConnectionTest, AsksForThePassword) {
    folder.Make("a.mdb", "secret")->Close();
    folder.Make("open.mdb", "")->Close();
    EXPECT_EQ(OpenFailure(folder.path("a.mdb"), "wrong"), ErrorNumber::WrongPassword);
    EXPECT_EQ(OpenFailure(folder.path("a.mdb"), ""), ErrorNumber::WrongPassword);
    EXPECT_EQ(OpenFailure(folder.path("a.mdb"), "secret"), std::nullopt);
    EXPECT_EQ(OpenFailure(folder.path("open.mdb"), "anything"), std::nullopt);
    EXPECT_EQ(FailureOf([&] { Database::Create(folder.path("a.mdb"), "x"); }), ErrorNumber::AlreadyExists);
    EXPECT_EQ(FailureOf([&] { Database::Create(folder.path("none/a.mdb"), "x"); }), ErrorNumber::NotADatabase);
}

TEST_F(ConnectionTest, OpensNamesOfEveryKind) {
    for (const char* name : {"a b.mdb", "100%.mdb", "a?b#c.mdb", "apo'strophe \"q\".mdb", "тест é.mdb"}) {
        const auto connection = folder.MakeWorking(name);
        connection->CreateLink("Other", folder.path(name), "secret", "T");
        EXPECT_TRUE(std::filesystem::exists(folder.path(name))) << name;
    }
}

TEST_F(ConnectionTest, HidesItsOwnTables) {
    const auto connection = folder.MakeWorking("a.mdb");
    connection->Execute("CREATE TABLE [_Data] (a INTEGER)");
    connection->CreateLink("Area", folder.path("none.mdb"), "", "Area_en");
    const auto tables = connection->Tables();
    ASSERT_EQ(tables.size(), 2U);
    EXPECT_EQ(tables[0].name, "_Data");
    EXPECT_EQ(tables[0].type, TableType::Table);
    EXPECT_EQ(tables[1].name, "Area");
    EXPECT_EQ(tables[1].type, TableType::Link);
    EXPECT_EQ(connection->catalogue().find("MSysTessaro"), nullptr);
}

TEST_F(ConnectionTest, FilesStayReadableByThePlainEngine) {
    folder.Make("a.mdb")->Execute("CREATE TABLE [T] (GuidText TEXT(50), a INTEGER)");
    sqlite3* plain = nullptr;
    ASSERT_EQ(sqlite3_open(folder.path("a.mdb").c_str(), &plain), SQLITE_OK);
    std::string verdict;
    const auto take = [](void* target, int, char** texts, char**) {
        *static_cast<std::string*>(target) += texts[0];
        return 0;
    };
    EXPECT_EQ(sqlite3_exec(plain, "PRAGMA integrity_check; SELECT count(*) FROM T", take, &verdict, nullptr),
              SQLITE_OK);
    EXPECT_EQ(verdict, "ok0");
    sqlite3_close(plain);
}

TEST_F(ConnectionTest, AFailedStatementChangesNothing) {
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE [T] (a INTEGER NOT NULL)");
    EXPECT_EQ(connection->Execute("INSERT INTO [T] VALUES (1)"), 1);
    EXPECT_EQ(
        FailureOf([&] { connection->Execute("INSERT INTO [T] (a) SELECT 2 FROM [T] UNION ALL SELECT Null FROM [T]"); }),
        ErrorNumber::ConstraintFailed);
    EXPECT_EQ(FailureOf([&] { connection->Execute("DROP TABLE [None]"); }), ErrorNumber::NoSuchTable);
    EXPECT_EQ(RowsOf(*connection, "SELECT a FROM [T]"), "1;");
}

TEST_F(ConnectionTest, RollbackTakesBackRowsAndTables) {
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE [T] (a INTEGER)");
    connection->Begin();
    connection->Execute("INSERT INTO [T] VALUES (1)");
    connection->Execute("CREATE TABLE [U] (a INTEGER)");
    connection->Rollback();
    EXPECT_EQ(RowsOf(*connection, "SELECT a FROM [T]"), "");
    EXPECT_EQ(connection->catalogue().find("U"), nullptr);
    connection->Begin();
    connection->Execute("INSERT INTO [T] VALUES (2)");
    connection->Commit();
    EXPECT_EQ(RowsOf(*connection, "SELECT a FROM [T]"), "2;");
}

TEST_F(ConnectionTest, SeveralConnectionsSeeEachOthersTables) {
    const auto first = folder.Make("a.mdb");
    const auto second = Connection::Open(folder.path("a.mdb"), "secret");
    first->Execute("CREATE TABLE [T] (a INTEGER)");
    second->Execute("INSERT INTO [T] VALUES (7)");
    EXPECT_EQ(RowsOf(*first, "SELECT a FROM [T]"), "7;");
    second->Execute("DROP TABLE [T]");
    second->Execute("CREATE TABLE [T] (b INTEGER, a INTEGER)");
    second->Execute("INSERT INTO [T] VALUES (1, 8)");
    EXPECT_EQ(RowsOf(*first, "SELECT a FROM [T]"), "8;");
}

TEST_F(ConnectionTest, AStatementSeenBeforeIsNotTranslatedAgain) {
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE [T] (a INTEGER)");
    static_cast<void>(RowsOf(*connection, "SELECT a FROM [T]"));
    const auto before = connection->cacheCounts();
    for (int i = 0; i < 10; ++i)
        static_cast<void>(RowsOf(*connection, "SELECT a FROM [T]"));
    EXPECT_EQ(connection->cacheCounts().translated, before.translated);
    EXPECT_EQ(connection->cacheCounts().reused, before.reused + 10);
    connection->Execute("DROP TABLE [T]");
    connection->Execute("CREATE TABLE [T] (a DOUBLE)");
    connection->Execute("INSERT INTO [T] VALUES (2)");
    EXPECT_EQ(connection->OpenRecordset("SELECT a FROM [T]")[0].type(), Value::Type::Double);
}

TEST_F(ConnectionTest, KeepsThePlannersFiguresOfSmallTables) {
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE [T] (a LONG)");
    connection->Execute("CREATE TABLE [U] (a LONG)");
    const auto figure = [&] {
        static_cast<void>(RowsOf(*connection, "SELECT T.a FROM T INNER JOIN U ON T.a = U.a"));
        sqlite3* plain = nullptr;
        std::string stat;
        sqlite3_open(folder.path("a.mdb").c_str(), &plain);
        const auto take = [](void* target, int, char** texts, char**) {
            *static_cast<std::string*>(target) = texts[0];
            return 0;
        };
        sqlite3_exec(plain, "SELECT stat FROM sqlite_stat1 WHERE tbl = 'T'", take, &stat, nullptr);
        sqlite3_close(plain);
        return stat;
    };
    EXPECT_EQ(figure(), "");
    connection->Begin();
    for (int i = 0; i < 3; ++i)
        connection->Execute("INSERT INTO T (a) VALUES (1)");
    connection->Commit();
    EXPECT_EQ(figure(), "3");
    for (int i = 0; i < 4; ++i)
        connection->Execute("INSERT INTO T (a) SELECT a FROM T");
    EXPECT_EQ(figure(), "48");
    connection->Execute("INSERT INTO U (a) VALUES (1)");
    Recordset open = connection->OpenRecordset("SELECT T.a FROM T INNER JOIN U ON T.a = U.a", CursorType::ForwardOnly);
    connection->Execute("DELETE * FROM U");
    EXPECT_EQ(figure(), "48");
    EXPECT_EQ(open.GetRows().size(), 48U);
}

TEST_F(ConnectionTest, CopiesThroughTheEngine) {
    const auto connection = folder.Make("a.mdb");
    connection->Execute("CREATE TABLE [T] (a INTEGER)");
    connection->Execute("INSERT INTO [T] VALUES (1)");
    Write("b.mdb", "old");
    Database::Copy(folder.path("a.mdb"), folder.path("b.mdb"));
    EXPECT_EQ(RowsOf(*Connection::Open(folder.path("b.mdb"), "secret"), "SELECT a FROM [T]"), "1;");
    EXPECT_EQ(OpenFailure(folder.path("b.mdb"), "wrong"), ErrorNumber::WrongPassword);
    EXPECT_EQ(FailureOf([&] { Database::Copy(folder.path("none.mdb"), folder.path("b.mdb")); }),
              ErrorNumber::NotADatabase);
    EXPECT_EQ(OpenFailure(folder.path("b.mdb")), std::nullopt);
}

TEST_F(ConnectionTest, CompactingGivesTheRoomOfDeletedRowsBack) {
    const std::string path = folder.path("it's 5%.mdb");
    {
        const auto connection = folder.Make("it's 5%.mdb");
        connection->Execute("CREATE TABLE [T] (n COUNTER, a TEXT(100))");
        connection->Execute("CREATE INDEX byText ON [T] (a)");
        connection->Execute("INSERT INTO [T] (a) VALUES ('Été')");
        for (int i = 0; i < 14; ++i)
            connection->Execute("INSERT INTO [T] (a) SELECT a & '.' FROM [T]");
        connection->Execute("DELETE * FROM [T] WHERE n > 2");
    }
    const auto before = std::filesystem::file_size(path);
    Database::Compact(path);
    EXPECT_LT(std::filesystem::file_size(path) * 10, before);
    EXPECT_EQ(OpenFailure(path, "wrong"), ErrorNumber::WrongPassword);
    const auto connection = Connection::Open(path, "secret");
    EXPECT_EQ(RowsOf(*connection, "SELECT n, a FROM [T] WHERE a Like 'ÉTÉ*' ORDER BY n"), "1|Été;2|Été.;");
    connection->Execute("INSERT INTO [T] (a) VALUES ('next')");
    EXPECT_EQ(RowsOf(*connection, "SELECT n FROM [T] WHERE a = 'NEXT'"), "16385;") << "the counter goes on";
    Write("no.mdb", std::string(600, 'x'));
    EXPECT_EQ(FailureOf([&] { Database::Compact(folder.path("no.mdb")); }), ErrorNumber::NotADatabase);
    EXPECT_EQ(std::filesystem::file_size(folder.path("no.mdb")), 600U);
    EXPECT_EQ(FailureOf([&] { Database::Compact(folder.path("none.mdb")); }), ErrorNumber::NotADatabase);
}

TEST_F(ConnectionTest, AClosedConnectionSaysSo) {
    const auto connection = folder.Make("a.mdb");
    connection->Close();
    EXPECT_FALSE(connection->isOpen());
    EXPECT_EQ(FailureOf([&] { connection->Execute("CREATE TABLE [T] (a INTEGER)"); }), ErrorNumber::EngineError);
}

} // namespace
} // namespace jet
